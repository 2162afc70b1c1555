// Run-time errors as the VB runtime raised them: a number, a description and,
// where known, the position (line label) of the failing statement. Routines
// throw VbError and each routine's own trap reports it through ShowErrMsg,
// which reads the error in flight the way VB code read the Err object.
#pragma once

#include <QString>

#include <exception>
#include <optional>
#include <string>

namespace kelvary {

// Error numbers the program raises or tests for. Their descriptions are in
// the one table behind VbError::standardDescription.
namespace vberr {
constexpr long InvalidProcedureCall = 5;
constexpr long Overflow = 6;
constexpr long OutOfMemory = 7;
constexpr long SubscriptOutOfRange = 9;
constexpr long DivisionByZero = 11;
constexpr long TypeMismatch = 13;
constexpr long InternalError = 51;
constexpr long FileNotFound = 53;
constexpr long BadFileMode = 54;
constexpr long InputPastEnd = 62;
constexpr long PermissionDenied = 70;
constexpr long PathFileAccess = 75;
constexpr long PathNotFound = 76;
constexpr long ObjectNotSet = 91;  // an object variable used before it was set
constexpr long InvalidUseOfNull = 94;
constexpr long BadPropertyIndex = 381;
constexpr long NotSupported = 438;  // the object lacks the property or method
constexpr long NoCurrentRecord = 3021;
constexpr long ItemNotFound = 3265;  // a field or item missing from a collection
constexpr long SqlSyntax = -2147217900;  // the provider cannot parse the statement
constexpr long DatabaseError = -2147467259;  // the provider's generic failure
}  // namespace vberr

class VbError : public std::exception {
public:
    VbError(long number, QString description, std::optional<int> position = std::nullopt);

    long number() const { return number_; }
    const QString& description() const { return description_; }
    std::optional<int> position() const { return position_; }

    const char* what() const noexcept override { return what_.c_str(); }

    // The runtime's own description of a standard error number.
    static QString standardDescription(long number);
    static VbError standard(long number);

private:
    long number_;
    QString description_;
    std::optional<int> position_;
    std::string what_;
};

// The error in flight, as a VB error trap would see it in Err. Outside a catch
// block, or for an exception of another kind, it still yields a usable record
// so that no failure goes unreported.
struct ErrInfo {
    long number = 0;
    QString description;
    std::optional<int> position;
};
ErrInfo currentError();

}  // namespace kelvary

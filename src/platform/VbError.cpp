// Run-time error records and the runtime's Japanese descriptions of them.
#include "platform/VbError.h"

#include <new>

namespace kelvary {

VbError::VbError(long number, QString description, std::optional<int> position)
    : number_(number), description_(std::move(description)), position_(position),
      what_(QStringLiteral("%1: %2").arg(number).arg(description_).toStdString()) {}

namespace {

struct StandardText {
    long number;
    const char16_t* text;
};

// The runtime's and the provider's own wording, so that a report reads as
// the user has always seen it. A raise may still give its own description.
constexpr StandardText kStandardTexts[] = {
    {vberr::InvalidProcedureCall, u"プロシージャの呼び出し、または引数が不正です。"},
    {vberr::Overflow, u"オーバーフローしました。"},
    {vberr::OutOfMemory, u"メモリが不足しています。"},
    {vberr::SubscriptOutOfRange, u"インデックスが有効範囲にありません。"},
    {vberr::DivisionByZero, u"0 で除算しました。"},
    {vberr::TypeMismatch, u"型が一致しません。"},
    {vberr::FileNotFound, u"ファイルが見つかりません。"},
    {vberr::BadFileMode, u"ファイル モードが不正です。"},
    {vberr::InputPastEnd, u"ファイルにこれ以上データがありません。"},
    {vberr::PermissionDenied, u"書き込みできません。"},
    {vberr::PathFileAccess, u"パス/ファイル アクセス エラーです。"},
    {vberr::PathNotFound, u"パスが見つかりません。"},
    {vberr::ObjectNotSet, u"オブジェクト変数または With ブロック変数が設定されていません。"},
    {vberr::InvalidUseOfNull, u"Null の使い方が不正です。"},
    {vberr::BadPropertyIndex, u"プロパティ配列のインデックスが有効ではありません。"},
    {vberr::NotSupported, u"オブジェクトは、このプロパティまたはメソッドをサポートしていません。"},
    {vberr::NoCurrentRecord, u"BOF と EOF のいずれかが True になっているか、または現在のレコードが"
                             u"削除されています。要求された操作には、現在のレコードが必要です。"},
    {vberr::ItemNotFound, u"要求された名前、または序数に対応する項目はコレクションで見つかりません。"},
};

}  // namespace

QString VbError::standardDescription(long number) {
    for (const StandardText& entry : kStandardTexts)
        if (entry.number == number) return QString::fromUtf16(entry.text);
    return QStringLiteral("アプリケーション定義またはオブジェクト定義のエラーです。");
}

VbError VbError::standard(long number) { return VbError(number, standardDescription(number)); }

ErrInfo currentError() {
    const std::exception_ptr in_flight = std::current_exception();
    if (!in_flight) return {};
    try {
        std::rethrow_exception(in_flight);
    } catch (const VbError& e) {
        return {e.number(), e.description(), e.position()};
    } catch (const std::bad_alloc&) {
        return {vberr::OutOfMemory, VbError::standardDescription(vberr::OutOfMemory), std::nullopt};
    } catch (const std::exception& e) {
        return {vberr::InternalError, QString::fromLocal8Bit(e.what()), std::nullopt};
    } catch (...) {
        return {vberr::InternalError, QStringLiteral("内部エラーです。"), std::nullopt};
    }
}

}  // namespace kelvary

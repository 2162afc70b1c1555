// Run-time error records and the runtime's Japanese descriptions of them.
#include "platform/VbError.h"

#include <new>

namespace kelvary {

VbError::VbError(long number, QString description, std::optional<int> position)
    : number_(number), description_(std::move(description)), position_(position),
      what_(QStringLiteral("%1: %2").arg(number).arg(description_).toStdString()) {}

QString VbError::standardDescription(long number) {
    switch (number) {
    case vberr::InvalidProcedureCall: return QStringLiteral("プロシージャの呼び出し、または引数が不正です。");
    case vberr::Overflow: return QStringLiteral("オーバーフローしました。");
    case vberr::DivisionByZero: return QStringLiteral("0 で除算しました。");
    case vberr::TypeMismatch: return QStringLiteral("型が一致しません。");
    case vberr::FileNotFound: return QStringLiteral("ファイルが見つかりません。");
    case vberr::BadFileMode: return QStringLiteral("ファイル モードが不正です。");
    case vberr::InputPastEnd: return QStringLiteral("ファイルにこれ以上データがありません。");
    case vberr::PermissionDenied: return QStringLiteral("書き込みできません。");
    case vberr::PathNotFound: return QStringLiteral("パスが見つかりません。");
    case vberr::InvalidUseOfNull: return QStringLiteral("Null の使い方が不正です。");
    case 9: return QStringLiteral("インデックスが有効範囲にありません。");
    case 381: return QStringLiteral("プロパティ配列のインデックスが有効ではありません。");
    case 438: return QStringLiteral("オブジェクトは、このプロパティまたはメソッドをサポートしていません。");
    case vberr::ItemNotFound:
        return QStringLiteral("要求された名前、または序数に対応する項目はコレクションで見つかりません。");
    default: return QStringLiteral("アプリケーション定義またはオブジェクト定義のエラーです。");
    }
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
        return {vberr::OutOfMemory, QStringLiteral("メモリが不足しています。"), std::nullopt};
    } catch (const std::exception& e) {
        return {vberr::InternalError, QString::fromLocal8Bit(e.what()), std::nullopt};
    } catch (...) {
        return {vberr::InternalError, QStringLiteral("内部エラーです。"), std::nullopt};
    }
}

}  // namespace kelvary

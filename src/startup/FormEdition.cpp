// The form editions.
#include "startup/FormEdition.h"

#include "platform/Variant.h"

namespace kelvary {

FormEdition formEditionFromEnforceDate(const Variant& enforceDate) {
    const bool current = enforceDate.isDateValue() && enforceDate.toDate() == VbDate{QDate(2008, 4, 1), 0};
    return current ? FormEdition::Form200804 : FormEdition::Earlier;
}

bool offersPdf(FormEdition edition) { return edition == FormEdition::Form200804; }

QString applicationLayoutFile(FormEdition edition) {
    return edition == FormEdition::Form200804 ? QStringLiteral("ApplyDoc_200804.w30") : QStringLiteral("ApplyDoc.w30");
}

QString supplementLayoutFile(FormEdition edition) {
    return edition == FormEdition::Form200804 ? QStringLiteral("SubDoc_200804.w30") : QStringLiteral("SubDoc.w30");
}

HeaderRecords headerRecords(FormEdition edition) {
    if (edition == FormEdition::Form200804) return {7, 44, 26, true};
    return {5, 42, 24, false};
}

}  // namespace kelvary

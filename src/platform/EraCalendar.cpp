// Japanese era lookup through ICU's Japanese calendar. The era and its year
// are read from calendar fields (ICU's own year pattern writes 元 for year 1,
// the forms want 1); the era's name and Latin initial are formatted by ICU
// with the Japanese locale's era patterns.
#include "platform/EraCalendar.h"

#include "platform/VbError.h"

#include <unicode/calendar.h>
#include <unicode/fieldpos.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include <memory>

namespace kelvary {
namespace {

constexpr qint64 kUnixEpochJulianDay = 2440588;
constexpr double kMillisecondsPerDay = 86400000.0;

[[noreturn]] void failIcu(UErrorCode status) {
    throw VbError(vberr::InternalError,
                  QStringLiteral("和暦の計算ができません: %1")
                      .arg(QString::fromLatin1(u_errorName(status))));
}

// ICU objects are costly to build and not safe to share between threads.
class EraTools {
public:
    EraTools() {
        UErrorCode status = U_ZERO_ERROR;
        const icu::Locale japanese("ja_JP@calendar=japanese");
        calendar_.reset(icu::Calendar::createInstance(icu::TimeZone::getGMT()->clone(), japanese, status));
        name_ = std::make_unique<icu::SimpleDateFormat>(icu::UnicodeString(u"GGGG"), japanese, status);
        initial_ = std::make_unique<icu::SimpleDateFormat>(icu::UnicodeString(u"GGGGG"), japanese, status);
        if (U_FAILURE(status)) failIcu(status);
    }

    JapaneseEra eraOf(const QDate& date) {
        UErrorCode status = U_ZERO_ERROR;
        // Noon GMT on the day: the calendar's zone is GMT too, so no shift can cross midnight.
        const double millis =
            static_cast<double>(date.toJulianDay() - kUnixEpochJulianDay) * kMillisecondsPerDay +
            kMillisecondsPerDay / 2;
        calendar_->setTime(millis, status);
        JapaneseEra era;
        era.year = calendar_->get(UCAL_YEAR, status);
        if (U_FAILURE(status)) failIcu(status);
        era.name = format(*name_);
        era.initial = format(*initial_);
        return era;
    }

private:
    QString format(const icu::SimpleDateFormat& pattern) {
        icu::UnicodeString text;
        icu::FieldPosition position;
        pattern.format(*calendar_, text, position);
        return QString(reinterpret_cast<const QChar*>(text.getBuffer()), text.length());
    }

    std::unique_ptr<icu::Calendar> calendar_;
    std::unique_ptr<icu::SimpleDateFormat> name_;
    std::unique_ptr<icu::SimpleDateFormat> initial_;
};

EraTools& eraTools() {
    thread_local EraTools tools;
    return tools;
}

}  // namespace

JapaneseEra japaneseEraOf(const QDate& date) {
    if (!date.isValid() || date < QDate(1868, 9, 8)) {
        throw VbError::standard(vberr::InvalidProcedureCall);
    }
    return eraTools().eraOf(date);
}

}  // namespace kelvary

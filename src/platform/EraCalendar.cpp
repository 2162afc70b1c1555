// Japanese era lookup. The eras' first days are read from ICU's calendar
// data, the table its Japanese calendar is built on, so a new era arrives
// with ICU; a date belongs to the last era begun on or before it, and the
// era's year counts from 1 at its first day (ICU's own year pattern writes 元
// for year 1, the forms want 1). The modern eras are named from the table
// below: ICU's calendar and date formats, built only to name them, cost a
// run some 4 MB of memory and a tenth of its start. An era ICU knows and the
// table does not is named by ICU's formats with the Japanese locale's era
// patterns.
#include "platform/EraCalendar.h"

#include "platform/VbError.h"

#include <unicode/calendar.h>
#include <unicode/fieldpos.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>
#include <unicode/ures.h>

#include <QByteArray>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <vector>

namespace kelvary {
namespace {

constexpr qint64 kUnixEpochJulianDay = 2440588;
constexpr double kMillisecondsPerDay = 86400000.0;

[[noreturn]] void failIcu(UErrorCode status) {
    throw VbError(vberr::InternalError,
                  QStringLiteral("和暦の計算ができません: %1")
                      .arg(QString::fromLatin1(u_errorName(status))));
}

struct Resource {
    UResourceBundle* bundle = nullptr;
    ~Resource() { ures_close(bundle); }
};

// The first day of every era, by ICU's era number. An era whose name is not
// settled yet is left out, as ICU's calendar leaves it out unless told to
// take it (ICU_ENABLE_TENTATIVE_ERA=true).
std::vector<QDate> readEraStarts() {
    UErrorCode status = U_ZERO_ERROR;
    Resource data{ures_openDirect(nullptr, "supplementalData", &status)};
    Resource calendars{ures_getByKey(data.bundle, "calendarData", nullptr, &status)};
    Resource japanese{ures_getByKey(calendars.bundle, "japanese", nullptr, &status)};
    Resource eras{ures_getByKey(japanese.bundle, "eras", nullptr, &status)};
    if (U_FAILURE(status)) failIcu(status);
    const int count = ures_getSize(eras.bundle);
    std::vector<QDate> starts(static_cast<std::size_t>(count));
    int firstTentative = count;
    for (int i = 0; i < count; ++i) {
        Resource era{ures_getByIndex(eras.bundle, i, nullptr, &status)};
        if (U_FAILURE(status)) failIcu(status);
        const int number = std::atoi(ures_getKey(era.bundle));
        if (number < 0 || number >= count) failIcu(U_INVALID_FORMAT_ERROR);
        UErrorCode optional = U_ZERO_ERROR;
        Resource named{ures_getByKey(era.bundle, "named", nullptr, &optional)};
        if (U_SUCCESS(optional)) {
            int32_t length = 0;
            const UChar* text = ures_getString(named.bundle, &length, &optional);
            if (U_SUCCESS(optional) && QString::fromUtf16(text, length) == QLatin1String("false"))
                firstTentative = std::min(firstTentative, number);
        }
        Resource start{ures_getByKey(era.bundle, "start", nullptr, &status)};
        int32_t fields = 0;
        const int32_t* ymd = ures_getIntVector(start.bundle, &fields, &status);
        if (U_FAILURE(status) || fields != 3) failIcu(U_FAILURE(status) ? status : U_INVALID_FORMAT_ERROR);
        starts[static_cast<std::size_t>(number)] = QDate(ymd[0], ymd[1], ymd[2]);
    }
    if (qgetenv("ICU_ENABLE_TENTATIVE_ERA") != "true") starts.resize(static_cast<std::size_t>(firstTentative));
    return starts;
}

const std::vector<QDate>& eraStarts() {
    static const std::vector<QDate> starts = readEraStarts();
    return starts;
}

struct EraName {
    QDate start;
    const char16_t* initial;
    const char16_t* name;
};

const EraName kModernEras[] = {
    {QDate(1868, 9, 8), u"M", u"明治"},  {QDate(1912, 7, 30), u"T", u"大正"},
    {QDate(1926, 12, 25), u"S", u"昭和"}, {QDate(1989, 1, 8), u"H", u"平成"},
    {QDate(2019, 5, 1), u"R", u"令和"},
};

// ICU's formats, for an era the table does not name. ICU objects are costly
// to build and not safe to share between threads.
class EraFormats {
public:
    EraFormats() {
        UErrorCode status = U_ZERO_ERROR;
        const icu::Locale japanese("ja_JP@calendar=japanese");
        calendar_.reset(icu::Calendar::createInstance(icu::TimeZone::getGMT()->clone(), japanese, status));
        name_ = std::make_unique<icu::SimpleDateFormat>(icu::UnicodeString(u"GGGG"), japanese, status);
        initial_ = std::make_unique<icu::SimpleDateFormat>(icu::UnicodeString(u"GGGGG"), japanese, status);
        if (U_FAILURE(status)) failIcu(status);
    }

    void name(const QDate& date, JapaneseEra& era) {
        UErrorCode status = U_ZERO_ERROR;
        // Noon GMT on the day: the calendar's zone is GMT too, so no shift can cross midnight.
        const double millis =
            static_cast<double>(date.toJulianDay() - kUnixEpochJulianDay) * kMillisecondsPerDay +
            kMillisecondsPerDay / 2;
        calendar_->setTime(millis, status);
        if (U_FAILURE(status)) failIcu(status);
        era.name = format(*name_);
        era.initial = format(*initial_);
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

EraFormats& eraFormats() {
    thread_local EraFormats formats;
    return formats;
}

}  // namespace

JapaneseEra japaneseEraOf(const QDate& date) {
    if (!date.isValid() || date < QDate(1868, 9, 8)) {
        throw VbError::standard(vberr::InvalidProcedureCall);
    }
    const std::vector<QDate>& starts = eraStarts();
    std::size_t number = starts.size();
    while (number > 0 && starts[number - 1] > date) --number;
    if (number == 0) throw VbError::standard(vberr::InvalidProcedureCall);
    const QDate& start = starts[number - 1];
    JapaneseEra era;
    era.year = date.year() - start.year() + 1;
    for (const EraName& known : kModernEras) {
        if (known.start == start) {
            era.initial = QString::fromUtf16(known.initial);
            era.name = QString::fromUtf16(known.name);
            return era;
        }
    }
    eraFormats().name(date, era);
    return era;
}

}  // namespace kelvary

// Filling the application form. Both layouts share one field map; they differ
// in the applicant column and in where the agent switch comes from.
#include "print/ApplicationFormPages.h"

#include "db/mdlFunctionDatabase.h"
#include "platform/Variant.h"
#include "platform/VbFormat.h"
#include "print/frmPrintManager.h"
#include "startup/mdlFunctionApplication.h"
#include "startup/mdlFunctionStandard.h"

namespace kelvary {
namespace {

const QString kCrLf = QStringLiteral("\r\n");

QString fieldText(const Recordset& record, const char* name) { return record[QString::fromLatin1(name)].text(); }

Variant eraDate(const Recordset& record, const char* name) {
    return gvarEraDateText(record[QString::fromLatin1(name)], 2);
}

bool filedByAgentOnCommandLine() {
    QString fields[3];
    std::optional<OutputMode> mode;
    gCommandGet(fields[0], fields[1], fields[2], mode);
    return fields[2].compare(QStringLiteral("y"), Qt::CaseInsensitive) == 0;
}

// VB's comparison of a settings text with the number 1.
bool settingIsOne(const QString& text) {
    double value = 0;
    return vbParseNumber(text.trimmed(), value) && value == 1.0;
}

// Struck label of the licensing authority: the minister's licence strikes the
// governor label, a governor's licence the minister label.
void mSetPrefChief(frmPrintManager& manager, const Variant& prefCode, const QString& name1, const QString& name2) {
    trapped(QStringLiteral("mSetPrefChief"), 0, [&] {
        if (prefCode.isNull()) return;
        // A code written as text is still only a number in the statement.
        const QString code = QString::number(prefCode.toLong());
        const QString prefName = gvarGetData(QStringLiteral("PrefName"), QStringLiteral("tblPref"),
                                             QStringLiteral("PrefID=") + code, Variant(QString()))
                                     .text();
        if (prefCode.toLong() == 0) {
            manager.SetStrikeLine(name2, true, 1);
            manager.OutPutData(name2, QStringLiteral("知事"));
        } else {
            manager.SetStrikeLine(name1, true, 1);
            manager.OutPutData(name2, prefName + QStringLiteral("知事"));
        }
    });
}

// General (般) or special (特) licence: the class that does not apply is struck.
// No trap of its own; an unset class strikes nothing.
void mSetLicenceClass(frmPrintManager& manager, const Variant& classCode, const QString& nameA, const QString& nameB) {
    if (classCode.isNull() || classCode.text().isEmpty()) return;
    switch (classCode.toLong()) {
        case 1: manager.SetStrikeLine(nameB, true, 1); break;
        case 2: manager.SetStrikeLine(nameA, true, 1); break;
        default: break;
    }
}

// One licence block: the current licence (C9–C13) or the previous one (C14–C18).
struct LicenceFields {
    const char* prefCode;
    const char* classCode;
    const char* numberA;
    const char* numberB;
    const char* date;
    int first;       // number of the prefecture-code field
    int classField;  // number of the class label fields
};

void writeLicence(frmPrintManager& manager, const Recordset& record, const LicenceFields& f) {
    const auto name = [](int n) { return QStringLiteral("C%1").arg(n); };
    const int dateField = f.first + 4;
    if (fieldText(record, f.numberB).isEmpty()) {
        manager.OutPutData(name(dateField), gvarEraDateText(Variant::null(), 2));
        return;
    }
    const Variant prefCode = record[QString::fromLatin1(f.prefCode)];
    manager.OutPutData(name(f.first), prefCode, 0, 1, QStringLiteral("00"));
    mSetPrefChief(manager, prefCode, name(f.first) + QStringLiteral("b1"), name(f.first) + QStringLiteral("b2"));
    mSetLicenceClass(manager, record[QString::fromLatin1(f.classCode)], name(f.classField) + QStringLiteral("a"),
                     name(f.classField) + QStringLiteral("b"));
    // Two digits, as the payload carries it: a number typed full-width is a number.
    manager.OutPutData(name(f.first + 2), record[QString::fromLatin1(f.numberA)], 0, 1, QStringLiteral("00"));
    manager.OutPutData(name(f.first + 3), record[QString::fromLatin1(f.numberB)]);
    manager.OutPutData(name(dateField), eraDate(record, f.date));
}

// One business year under review: its dates, and its two codes only when both
// dates are there.
void writeBusinessYear(frmPrintManager& manager, const Recordset& record, int year, int firstField) {
    const QString from = QStringLiteral("FYearFrom%1").arg(year);
    const QString to = QStringLiteral("FYearTo%1").arg(year);
    const auto name = [](int n) { return QStringLiteral("C%1").arg(n); };
    manager.OutPutData(name(firstField), gvarEraDateText(record[from], 2));
    manager.OutPutData(name(firstField + 1), gvarEraDateText(record[to], 2));
    if (record[from].isNull() || record[to].isNull()) return;
    manager.OutPutData(name(firstField + 2), record[QStringLiteral("FYearCtgr%1A").arg(year)], 0, 1,
                       QStringLiteral("00"));
    manager.OutPutData(name(firstField + 3), record[QStringLiteral("FYearCtgr%1B").arg(year)], 0, 1,
                       QStringLiteral("##"));
}

QString printApplicantColumn(const Recordset& record, bool byAgent) {
    QString column = fieldText(record, "ApplierColumnAddress") + kCrLf + fieldText(record, "ApplierColumnName") +
                     kCrLf + fieldText(record, "ApplierColumnPresident");
    if (byAgent) column += kCrLf + kCrLf + gstrMakeProxyString();
    return column;
}

}  // namespace

ApplicantColumn mPdfApplicantColumn(const Recordset& record, bool byAgent) {
    ApplicantColumn c;
    // The labels stay level with the addresses and names by line breaks alone,
    // so an address short enough for one line gets a blank line after it.
    const auto address = [&](const QString& text) {
        c.column += text + kCrLf;
        if (glngLen(Variant(text)) < 41) c.column += kCrLf;
    };
    const QString registered = fieldText(record, "ApplierColumnAddress1");
    if (!registered.isEmpty()) {
        c.title += QStringLiteral("登記上の住所") + kCrLf + kCrLf;
        address(registered);
        c.title += QStringLiteral("事実上の住所") + kCrLf + kCrLf;
        address(fieldText(record, "ApplierColumnAddress"));
    } else {
        c.title += kCrLf;
        address(fieldText(record, "ApplierColumnAddress"));
    }
    c.title += kCrLf + QStringLiteral("申　請　者") + kCrLf;
    c.column += fieldText(record, "ApplierColumnName") + kCrLf + fieldText(record, "ApplierColumnPresident");
    if (byAgent) {
        c.title += kCrLf.repeated(5);
        c.column += kCrLf + kCrLf + gstrMakeProxyString();
    }
    const QString creator = fieldText(record, "ApplierColumnCreName");
    if (!creator.isEmpty()) {
        c.title += QStringLiteral("作　成　者");
        c.column += kCrLf + creator;
    }
    return c;
}

void mWriteApplicationForm(frmPrintManager& manager, std::int32_t apDataCode, bool byAgent, ApplicationLayout layout) {
    switch (layout) {
    case ApplicationLayout::Print: manager.SetPrintFile(applicationLayoutFile(FormEdition::Form200804)); break;
    case ApplicationLayout::Pdf: manager.SetPrintFile(QStringLiteral("ApplyDocPdf_200804.w30")); break;
    case ApplicationLayout::Earlier: manager.SetPrintFile(applicationLayoutFile(FormEdition::Earlier)); break;
    }
    const Recordset record =
        gobjMakeRecordset(QStringLiteral("Select * From tmpAPData Where APDataCode= ") + QString::number(apDataCode));

    if (layout != ApplicationLayout::Pdf) {
        manager.OutPutData(QStringLiteral("ApplierColumn"), printApplicantColumn(record, byAgent));
    } else {
        const ApplicantColumn column = mPdfApplicantColumn(record, byAgent);
        manager.OutPutData(QStringLiteral("ApplierTitle"), column.title);
        manager.OutPutData(QStringLiteral("ApplierColumn"), column.column);
    }

    const QString section = QStringLiteral("UserInfo");
    const QString registNumber = gvarGetIniData(QStringLiteral("RegistNumber"), section).text();
    if (byAgent && !registNumber.trimmed().isEmpty())
        manager.OutPutData(QStringLiteral("RegistNumber"), QStringLiteral("登録番号  ") + registNumber);

    manager.OutPutData(QStringLiteral("MakeDate"), eraDate(record, "ApplyDate"));
    manager.OutPutData(QStringLiteral("C4"), record[QStringLiteral("ContactPosition")]);
    manager.OutPutData(QStringLiteral("C5"), record[QStringLiteral("ContactName")]);
    manager.OutPutData(QStringLiteral("C6"), record[QStringLiteral("ContactTel")]);
    manager.OutPutData(QStringLiteral("C7"), record[QStringLiteral("ContactFax")]);
    manager.OutPutData(QStringLiteral("C8"), eraDate(record, "ApplyDate"));

    writeLicence(manager, record, {"PrefCode1", "ClasCtgr1", "LcnsNum1A", "LcnsNum1B", "LcnsDate1", 9, 10});
    writeLicence(manager, record, {"PrefCode2", "ClasCtgr2", "LcnsNum2A", "LcnsNum2B", "LcnsDate2", 14, 15});

    manager.OutPutData(QStringLiteral("C19"), eraDate(record, "BaseDate"));
    writeBusinessYear(manager, record, 1, 20);
    writeBusinessYear(manager, record, 2, 24);
    writeBusinessYear(manager, record, 3, 28);

    manager.OutPutData(QStringLiteral("C32"), vbFormat(record[QStringLiteral("Distinction")], QStringLiteral("#")));
    manager.OutPutData(QStringLiteral("C33"), vbFormat(record[QStringLiteral("LastApl")], QStringLiteral("#")));
    if (layout == ApplicationLayout::Earlier) {
        manager.OutPutData(QStringLiteral("C34"), vbFormat(record[QStringLiteral("FCObgt1")], QStringLiteral("#")));
        manager.OutPutData(QStringLiteral("C35"), vbFormat(record[QStringLiteral("FCObgt2")], QStringLiteral("#")));
    } else {
        manager.OutPutData(QStringLiteral("C34"), vbFormat(record[QStringLiteral("FType")], QStringLiteral("#")));
    }
    manager.OutPutData(QStringLiteral("C36"), record[QStringLiteral("TRNameKana")]);
    manager.OutPutData(QStringLiteral("C37"), record[QStringLiteral("TRName")]);
    manager.OutPutData(QStringLiteral("C38"), record[QStringLiteral("PSNameKana")]);
    manager.OutPutData(QStringLiteral("C39"), record[QStringLiteral("PSName")]);
    manager.OutPutData(QStringLiteral("C40"), record[QStringLiteral("OfficeCityCode")], 0, 1, QStringLiteral("00000"));
    manager.OutPutData(QStringLiteral("C41"), record[QStringLiteral("OfficeAddr")]);
    manager.OutPutData(QStringLiteral("C42"), record[QStringLiteral("OfficeZipcode")]);
    manager.OutPutData(QStringLiteral("C43"), record[QStringLiteral("OfficeTel")]);
    manager.OutPutData(QStringLiteral("C44"), record[QStringLiteral("Item01Single")], 0, 1, QStringLiteral("#,##0"));
    if (layout == ApplicationLayout::Earlier) {
        // The consolidated amounts only for a filer who must make consolidated statements.
        const Variant duty = record[QStringLiteral("FCObgt1")];
        const bool consolidated = duty.isNumeric() && !duty.isEmpty() && duty.toDouble() == 1.0;
        const QString amount = QStringLiteral("#,##0");
        if (consolidated) manager.OutPutData(QStringLiteral("C45"), record[QStringLiteral("Item01Plural")], 0, 1, amount);
        manager.OutPutData(QStringLiteral("C46"), record[QStringLiteral("Item02Single")], 0, 1, amount);
        if (consolidated) manager.OutPutData(QStringLiteral("C47"), record[QStringLiteral("Item02Plural")], 0, 1, amount);
    } else {
        manager.OutPutData(QStringLiteral("C45"), record[QStringLiteral("Item03")], 0, 1, QStringLiteral("#,##0"));
    }
    manager.OutPutData(QStringLiteral("C48"), record[QStringLiteral("Remarks")]);

    if (settingIsOne(gvarGetIniData(QStringLiteral("UserClass"), section).text()) && !byAgent)
        manager.PrintProxyColumn();
}

void mPrintAP(frmPrintManager& manager, std::int32_t apDataCode, bool proxy, bool problemMark, FormEdition edition) {
    trapped(QStringLiteral("mPrintAP"), 1, [&] {
        mWriteApplicationForm(manager, apDataCode, proxy,
                              edition == FormEdition::Earlier ? ApplicationLayout::Earlier : ApplicationLayout::Print);
        manager.EndPage(problemMark);
    });
}

void mPdfPrintAP(frmPrintManager& manager, std::int32_t apDataCode, bool problemMark) {
    trapped(QStringLiteral("mPdfPrintAP"), 1, [&] {
        mWriteApplicationForm(manager, apDataCode, filedByAgentOnCommandLine(), ApplicationLayout::Pdf);
        manager.EndPage(problemMark);
        manager.gPdfClose();
    });
}

}  // namespace kelvary

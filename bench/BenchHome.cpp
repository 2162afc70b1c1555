// Scratch program folder of the micro-benchmarks.
#include "BenchHome.h"

#include "db/mdlFunctionDatabase.h"
#include "intake/clsAnlBasicInfo.h"
#include "intake/clsApply2Data.h"
#include "platform/AppObject.h"
#include "print/PeriodImport.h"
#include "startup/BatchUserInterface.h"
#include "startup/UserInterface.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <memory>
#include <stdexcept>

namespace kelvary::bench {
namespace {

void copyTree(const QString& from, const QString& to) {
    QDir().mkpath(to);
    QDirIterator it(from, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString source = it.next();
        const QString target = to + QLatin1Char('/') + QDir(from).relativeFilePath(source);
        if (it.fileInfo().isDir()) QDir().mkpath(target);
        else if (!QFile::copy(source, target))
            throw std::runtime_error("cannot copy " + source.toStdString());
    }
}

}  // namespace

QString sampleApplication() { return app::path() + QStringLiteral("/sample/app.dat"); }

QString generatedApplication(const char* name) {
    return QStringLiteral(KELVARY_BENCH_DATA_DIR "/") + QLatin1String(name) + QStringLiteral("/app.dat");
}

BenchHome::BenchHome() : previousPath_(app::path()) {
    if (!dir_.isValid()) throw std::runtime_error("no scratch folder");
    copyTree(QStringLiteral(KELVARY_BENCH_TEMPLATE_DIR), dir_.path());
    QDir().mkpath(dir_.filePath(QStringLiteral("Temp")));
    app::setPath(dir_.path());
    setUserInterface(std::make_unique<BatchUserInterface>(false));
    gstrConnectionString = QStringLiteral("provider=microsoft.jet.oledb.4.0;data source=") +
                           dir_.filePath(QStringLiteral("SystemData.mdb"));
    gobjConnection = gobjOpenConnection();
    if (!gobjConnection) throw std::runtime_error("the working database does not open");
}

BenchHome::~BenchHome() {
    gobjConnection.reset();
    setUserInterface(nullptr);
    app::setPath(previousPath_);
}

QString BenchHome::temp(const QString& name) const { return dir_.filePath(QStringLiteral("Temp/") + name); }

std::vector<std::int32_t> BenchHome::loadApplication(const QString& applicationFile) {
    clsAnlBasicInfo basicInfo;
    basicInfo.LoadData(applicationFile);
    clsApply2Data().LoadData(applicationFile);
    std::vector<std::int32_t> ids;
    for (Recordset rs = gobjMakeRecordset(QStringLiteral("Select IndexID From tblIndex Order By FYearNumber Desc"));
         !rs.isNothing() && !rs.eof(); rs.moveNext())
        ids.push_back(static_cast<std::int32_t>(rs.value(0).toLong()));
    if (ids.empty()) throw std::runtime_error("the application has no periods: " + applicationFile.toStdString());
    return ids;
}

void BenchHome::importPeriod(std::int32_t indexId) {
    const auto linkCode = static_cast<std::int32_t>(
        gvarGetData(QStringLiteral("LinkCode"), QStringLiteral("tblIndex"),
                    QStringLiteral("IndexID=") + QString::number(indexId), Variant(0))
            .toLong());
    mCopyZaimuData(indexId, linkCode);
    mPutSpecialItemCode(indexId);
    mReplaceFixedAssets(indexId);
    mPref01Special(indexId);
}

}  // namespace kelvary::bench

// One fiscal period as the print driver handles it: the import from the
// linked sibling tables into the working tables, and the statement payloads
// with their symbols. Measured on the sample's newest period and on the
// newest period of the large generated applications.
#include "BenchHome.h"

#include "db/mdlFunctionDatabase.h"
#include "print/PeriodImport.h"
#include "qr/clsQRCode_200804.h"

#include <benchmark/benchmark.h>

#include <cstring>

namespace kelvary::bench {
namespace {

QString applicationFile(const char* which) {
    return std::strcmp(which, "sample") == 0 ? sampleApplication() : generatedApplication(which);
}

void removePeriod(std::int32_t indexId) {
    for (const char* table :
         {"tmpFSInfoData", "tmpFSItemData", "tmpFSNoteData", "tmpFSCapitalRow", "tmpFSCapitalCol"})
        gblnExecuteSql(QStringLiteral("Delete From ") + QLatin1String(table) + QStringLiteral(" Where FSDataCode=") +
                       QString::number(indexId));
}

void BM_ImportPeriod(benchmark::State& state, const char* which) {
    BenchHome home;
    const std::int32_t newest = home.loadApplication(applicationFile(which)).front();
    for (auto _ : state) {
        state.PauseTiming();
        removePeriod(newest);
        state.ResumeTiming();
        home.importPeriod(newest);
    }
    const long rows = gvarGetData(QStringLiteral("Count(*)"), QStringLiteral("tmpFSItemData"),
                                  QStringLiteral("FSDataCode=") + QString::number(newest), Variant(0))
                          .toLong();
    state.counters["item_rows"] = static_cast<double>(rows);
}

void BM_PeriodPayloads(benchmark::State& state, const char* which) {
    BenchHome home;
    const std::int32_t newest = home.loadApplication(applicationFile(which)).front();
    home.importPeriod(newest);
    long symbols = 0;
    for (auto _ : state) {
        clsQRCode_200804 qr;
        qr.setVerifyID(QStringLiteral("0000123420090715093000"));
        qr.MakeFSData(0, newest);
        symbols = 2 + qr.FSQRCodeCount() + qr.KamokuQRCodeCount() + qr.NListQRCodeCount() + qr.CapitalQRCodeCount();
    }
    state.counters["symbols"] = static_cast<double>(symbols);
}

BENCHMARK_CAPTURE(BM_ImportPeriod, sample, "sample")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_ImportPeriod, large, "large")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_ImportPeriod, large_x2, "large-x2")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_PeriodPayloads, sample, "sample")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_PeriodPayloads, large, "large")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_PeriodPayloads, large_x2, "large-x2")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kelvary::bench

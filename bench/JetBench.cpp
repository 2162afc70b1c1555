// The sibling program's own Jet database on the large application (five
// periods of 600 items): the intake of a run on the Jet file once its SQLite
// copy exists, beside the same intake on the SQLite file (the difference is
// what the Jet file adds to a run), and the first run's copy of the Jet file.
#include "BenchHome.h"

#include "db/mdlFunctionDatabase.h"
#include "intake/clsAnlBasicInfo.h"
#include "platform/JetDatabase.h"

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFile>

#include <cstring>

namespace kelvary::bench {
namespace {

// The Jet twin of the large application's sibling database is written by
// bench/run-bench.sh (it needs a Jet writer, which the project does not ship)
// and named by KELVARY_BENCH_JET_TWIN; without it the Jet cases are skipped.
QString jetTwin() {
    return qEnvironmentVariable("KELVARY_BENCH_JET_TWIN");
}

// The large application's file beside the Jet twin of its sibling database.
QString jetApplication(const BenchHome& home) {
    const QString folder = home.path() + QStringLiteral("/large-jet");
    QDir().mkpath(folder);
    QFile::copy(generatedApplication("large"), folder + QStringLiteral("/app.dat"));
    QFile::copy(jetTwin(), folder + QStringLiteral("/Ledra.mdb"));
    return folder + QStringLiteral("/app.dat");
}

long itemRows() {
    return gvarGetData(QStringLiteral("Count(*)"), QStringLiteral("P_FSItemData"), QString(), Variant(0)).toLong();
}

void BM_SiblingIntake(benchmark::State& state, const char* which) {
    BenchHome home;
    const bool jet = std::strcmp(which, "jet") == 0;
    if (jet && !QFile::exists(jetTwin())) {
        state.SkipWithError("no Jet twin: set KELVARY_BENCH_JET_TWIN (bench/run-bench.sh writes one)");
        return;
    }
    const QString application = jet ? jetApplication(home) : generatedApplication("large");
    // The first run makes the copy; the runs measured find it.
    clsAnlBasicInfo().LoadData(application);
    const long rows = itemRows();
    if (rows != 3000) {
        state.SkipWithError("the Jet twin does not hold the large application's 3000 item rows (write it again from the generated Ledra.mdb)");
        return;
    }
    for (auto _ : state) {
        state.PauseTiming();
        gInitTable(QStringLiteral("tblIndex"));
        state.ResumeTiming();
        clsAnlBasicInfo().LoadData(application);
    }
    state.counters["item_rows"] = static_cast<double>(rows);
}

void BM_JetFirstCopy(benchmark::State& state) {
    BenchHome home;
    const QString twin = jetTwin();
    if (!QFile::exists(twin)) {
        state.SkipWithError("no Jet twin: set KELVARY_BENCH_JET_TWIN (bench/run-bench.sh writes one)");
        return;
    }
    const QString copy = home.temp(QStringLiteral("first-copy.sqlite"));
    for (auto _ : state) {
        state.PauseTiming();
        QFile::remove(copy);
        state.ResumeTiming();
        jet::copyToSqlite(twin, copy);
    }
    state.counters["bytes"] = static_cast<double>(QFile(twin).size());
}

BENCHMARK_CAPTURE(BM_SiblingIntake, large_sqlite, "sqlite")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_SiblingIntake, large_jet, "jet")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_JetFirstCopy)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kelvary::bench

// Entry point of the micro-benchmarks: one application object on the
// offscreen platform with the program's font substitutions, as batch runs
// have it, then Google Benchmark's own main.
#include "platform/Fonts.h"

#include <QApplication>
#include <QFont>

#include <benchmark/benchmark.h>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    kelvary::installFontSubstitutions();
    QApplication::setFont(QFont(kelvary::formFontFamily(), 10));
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

// One page of QR symbols ("FSQRCode.w30", twelve slots) filled through the
// print manager and kept for the preview, and the page drawn into a PDF
// file: page after page into one file, from the document as a PDF run draws
// it and from the kept page as the preview's printing does, and a whole file
// of one page.
#include "BenchHome.h"

#include "platform/Cp932.h"
#include "platform/LayoutRenderer.h"
#include "platform/PageOutput.h"
#include "print/frmPrintManager.h"
#include "qr/frmQRCode.h"

#include <benchmark/benchmark.h>

#include <array>

namespace kelvary::bench {
namespace {

constexpr int kSlots = 12;

// Twelve full symbols of item records in Temp, as a period leaves them.
std::array<QString, kSlots> writeSymbols(const BenchHome& home) {
    std::array<QString, kSlots> files;
    frmQRCode renderer;
    for (int n = 0; n < kSlots; ++n) {
        QString payload = QStringLiteral("\"[ZaimuData0_%1]\",\"0000123420090715093000\",40,2\r\n").arg(n + 1);
        for (int r = 1; r <= 40; ++r)
            payload += QStringLiteral("\"%1\",\"%2\"\r\n").arg(100 + r).arg(1284731L * (r + n) % 99999989);
        files[n] = home.temp(QStringLiteral("ZaimuData0_%1.bmp").arg(n + 1));
        renderer.MakeQRCode(files[n], payload);
    }
    return files;
}

void fillQrPage(frmPrintManager& manager, const std::array<QString, kSlots>& symbols) {
    manager.OutPutData(QStringLiteral("VersionNumber"), Variant(QStringLiteral("2008年4月版")));
    manager.OutPutData(QStringLiteral("PageInfo"), Variant(QStringLiteral("1 / 3")));
    manager.OutPutData(QStringLiteral("FiscalTerm"), Variant(QStringLiteral("第40期　H20.4.1 ～ H21.3.31")));
    manager.OutPutData(QStringLiteral("ApplierName"), Variant(QStringLiteral("（株）大雪総合建設")));
    manager.OutPutData(QStringLiteral("VerifyID"), Variant(QStringLiteral("[ID]0000123420090715093000")));
    for (int n = 1; n <= kSlots; ++n) {
        manager.SetImage(QStringLiteral("WrImage"), symbols[n - 1], n);
        manager.OutPutData(QStringLiteral("Num"), Variant(n), n);
        manager.OutPutData(QStringLiteral("WrText"), Variant(QStringLiteral("ZaimuData0_%1").arg(n)), n);
    }
}

// The filled page's document; nullptr, with the benchmark skipped, when the
// layout does not load.
const LayoutDocument* filledQrPage(const BenchHome& home, frmPrintManager& manager, benchmark::State& state) {
    const auto symbols = writeSymbols(home);
    manager.SetPrintFile(QStringLiteral("FSQRCode.w30"));
    if (!manager.document()) state.SkipWithError("FSQRCode.w30 does not load");
    else fillQrPage(manager, symbols);
    return manager.document();
}

void BM_FillAndKeepQrPage(benchmark::State& state) {
    BenchHome home;
    const auto symbols = writeSymbols(home);
    frmPrintManager manager;
    manager.SetPrintFile(QStringLiteral("FSQRCode.w30"));
    if (!manager.document()) {
        state.SkipWithError("FSQRCode.w30 does not load");
        return;
    }
    for (auto _ : state) {
        fillQrPage(manager, symbols);
        RecordedPage page = recordLayoutPage(*manager.document(), 1);
        benchmark::DoNotOptimize(page.images.size());
    }
}

// kept:0 draws the document's page, as a PDF run does, its symbols read and
// stored anew each time; kept:1 the page kept for the preview, as its
// printing does: its images, read once, the writer stores once.
void BM_WritePdfPage(benchmark::State& state) {
    BenchHome home;
    frmPrintManager manager;
    const LayoutDocument* document = filledQrPage(home, manager, state);
    if (!document) return;
    const RecordedPage kept = recordLayoutPage(*document, 1);
    PdfFileWriter pdf(home.temp(QStringLiteral("pages.pdf")), QStringLiteral("bench"), QStringLiteral("bench"));
    for (auto _ : state) {
        if (state.range(0) != 0) pdf.addPage(kept);
        else pdf.addPage(*document, 1);
    }
    pdf.commit();
}

void BM_WritePdfFileOfOnePage(benchmark::State& state) {
    BenchHome home;
    frmPrintManager manager;
    const LayoutDocument* document = filledQrPage(home, manager, state);
    if (!document) return;
    const QString file = home.temp(QStringLiteral("one.pdf"));
    for (auto _ : state) {
        PdfFileWriter pdf(file, QStringLiteral("bench"), QStringLiteral("bench"));
        pdf.addPage(*document, 1);
        pdf.commit();
    }
}

BENCHMARK(BM_FillAndKeepQrPage)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WritePdfPage)->ArgName("kept")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WritePdfFileOfOnePage)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kelvary::bench

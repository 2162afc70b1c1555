// One QR symbol of each size class the payloads produce: a header-sized
// symbol, a full symbol of item records (digits and quotes, byte mode), a
// full symbol of note text (mostly Kanji mode) and the largest payload a
// symbol can hold. Encoding alone, the 1-bit image, and the whole renderer
// step that writes the image and the payload copy into Temp.
#include "BenchHome.h"

#include "platform/Cp932.h"
#include "platform/QrSymbol.h"
#include "qr/frmQRCode.h"

#include <benchmark/benchmark.h>

namespace kelvary::bench {
namespace {

enum class Content { Records, Notes };

// A payload of about the given CP932 size in the shape the generators write.
QByteArray payloadOf(Content content, long bytes) {
    QString text = QStringLiteral("\"[ZaimuData0_1]\",\"0000123420090715093000\",40,2\r\n");
    for (int n = 1; cp932ByteLength(text) < bytes; ++n) {
        if (content == Content::Records)
            text += QStringLiteral("\"%1\",\"%2\"\r\n").arg(n * 7).arg(1284731L * n % 99999989);
        else
            text += QStringLiteral("\"%1\",\"有価証券の評価基準及び評価方法は、移動平均法による原価法によっている。\"\r\n")
                        .arg(n);
    }
    QByteArray cp932 = cp932Encode(text);
    cp932.truncate(static_cast<int>(bytes));
    // Never end inside a two-byte character.
    QString decoded;
    while (!cp932DecodeStrict(cp932, decoded)) cp932.chop(1);
    return cp932;
}

void BM_EncodeSymbol(benchmark::State& state, Content content) {
    const QByteArray payload = payloadOf(content, state.range(0));
    int version = 0;
    for (auto _ : state) {
        const auto symbol = qr::encodeSymbol(payload);
        if (!symbol) {
            state.SkipWithError("the payload fits no symbol");
            return;
        }
        version = symbol->version;
        benchmark::DoNotOptimize(symbol->dark.data());
    }
    state.counters["version"] = version;
    state.SetBytesProcessed(state.iterations() * payload.size());
}

void BM_SymbolImage(benchmark::State& state) {
    const auto symbol = qr::encodeSymbol(payloadOf(Content::Records, state.range(0)));
    for (auto _ : state) {
        const QImage image = qr::symbolImage(*symbol);
        benchmark::DoNotOptimize(image.constBits());
    }
}

void BM_RenderSymbolFiles(benchmark::State& state) {
    BenchHome home;
    const QString payload = cp932Decode(payloadOf(Content::Notes, state.range(0)));
    const QString file = home.temp(QStringLiteral("NListData0_1.bmp"));
    frmQRCode renderer;
    for (auto _ : state) renderer.MakeQRCode(file, payload);
}

// Sizes in CP932 bytes: a header, a full symbol of records or notes, and the
// largest symbol (version 40, level L holds 2953 bytes in byte mode).
BENCHMARK_CAPTURE(BM_EncodeSymbol, records, Content::Records)
    ->Arg(120)->Arg(900)->Arg(2300)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_EncodeSymbol, notes, Content::Notes)
    ->Arg(120)->Arg(900)->Arg(2300)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_SymbolImage)->Arg(120)->Arg(900)->Arg(2300)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_RenderSymbolFiles)->Arg(900)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace kelvary::bench

// The system printer into a PDF, through the same painting as paper: one face composed and
// printed (goal: under 50 ms), and a post-dated run of 12 cheques (goal: under 1 s).
#include "printer/impressora_sistema.h"
#include "printer/pinta_sistema.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdio>

using namespace vexa;

namespace {

void prepara() {
    static int argc = 1;
    static char nome[] = "vexa_bench_sistema";
    static char *argv[] = {nome, nullptr};
    if (!QCoreApplication::instance()) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        static QGuiApplication app(argc, argv);
    }
    define_impressor_sistema(imprime_sistema);
}

qint16 cheque(ImpressoraSistema &imp, int i) {
    return imp.ImprimeCheque("001", "1.234,56", "Maria da Silva", "Santos",
                             QStringLiteral("%1/03/25").arg(i + 1, 2, 10, QChar(u'0')), "1.234,56");
}

void SistemaUmaFaceEmPdf(benchmark::State &state) {
    prepara();
    QTemporaryDir pasta;
    ImpressoraSistema imp(pasta.path(), pasta.filePath("VEXA.INI"));
    imp.DefineArquivoPdf(pasta.filePath("face.pdf"));
    imp.IniciaPorta({});
    for (auto _ : state)
        if (cheque(imp, 0) != 1) state.SkipWithError("o cheque não foi impresso");
    imp.FechaPorta();
    std::printf("Impressora do sistema: uma face composta e impressa em PDF (meta: até 50 ms)\n");
}
BENCHMARK(SistemaUmaFaceEmPdf)->Unit(benchmark::kMillisecond);

// As a post-dated run prints: the port opened and closed around every cheque.
void SistemaDozeParcelasEmPdf(benchmark::State &state) {
    prepara();
    QTemporaryDir pasta;
    ImpressoraSistema imp(pasta.path(), pasta.filePath("VEXA.INI"));
    for (auto _ : state)
        for (int i = 0; i < 12; ++i) {
            imp.DefineArquivoPdf(pasta.filePath(QStringLiteral("parcela%1.pdf").arg(i)));
            imp.IniciaPorta({});
            if (cheque(imp, i) != 1) state.SkipWithError("a parcela não foi impressa");
            imp.FechaPorta();
        }
    std::printf("Impressora do sistema: 12 parcelas em PDF (meta: até 1 s)\n");
}
BENCHMARK(SistemaDozeParcelasEmPdf)->Unit(benchmark::kMillisecond);

} // namespace

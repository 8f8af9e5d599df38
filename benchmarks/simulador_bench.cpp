// The simulated printer at scale: a cheque, and a copy on a sheet of text, printed after
// 100,000 others cost what the first one costs; and the PDF of one face, its size and its
// time. The 100,000 cheques are written straight into the printer's journal, each line the one
// the printer itself wrote for a real cheque with its sheet's number changed, beside 100,000
// empty sheets in papel/.
#include "printer/pdf_face.h"
#include "printer/simulador.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <memory>
#include <vector>

using namespace vexa;

namespace {

constexpr int Impressos = 100000;
constexpr int Amostras = 31;

// Painting a PDF needs a graphical application; a bench main without one gets the text alone.
void prepara_aplicacao() {
    static int argc = 1;
    static char nome[] = "vexa_bench";
    static char *argv[] = {nome, nullptr};
    if (!QCoreApplication::instance()) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        static QGuiApplication app(argc, argv);
    }
    define_pintor_pdf(pdf_face);
}

// One print as the program makes it: port opened, the cheque, port closed. In milliseconds.
double imprime(Simulador &imp) {
    QElapsedTimer relogio;
    relogio.start();
    imp.IniciaPorta("COM2");
    const qint16 r =
        imp.ImprimeCheque("001", "1.234,50", "Maria da Silva", "Santos", "05/03/24", "");
    imp.FechaPorta();
    if (r != Simulador::Feito) std::fprintf(stderr, "ImprimeCheque respondeu %d\n", r);
    return relogio.nsecsElapsed() / 1e6;
}

// A copy as the copy screen sends it, inverted: a sheet of running text with its PDF. In
// milliseconds.
double imprime_copia(Simulador &imp) {
    QElapsedTimer relogio;
    relogio.start();
    imp.IniciaPorta("COM2");
    imp.TravaDoc(1);
    imp.FormataTX("", 3, 0, 0, 0, 0);
    imp.TolvaneTX("\x1BI");
    for (int i = 21; i >= 1; --i)
        imp.TolvaneTX(QStringLiteral("%1 linha da copia do cheque\r\n").arg(i, 2));
    imp.TolvaneTX("\x1BI");
    imp.TravaDoc(0);
    const qint16 r = imp.FechaPorta();
    if (r != Simulador::Feito) std::fprintf(stderr, "FechaPorta respondeu %d\n", r);
    return relogio.nsecsElapsed() / 1e6;
}

double mediana(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

// A printer whose memory holds Impressos cheques, and their sheets.
void enche(const QString &pasta) {
    QString diario;
    QByteArray modelo;
    {
        Simulador imp(pasta);
        imprime(imp);
        diario = imp.Memoria().ArquivoDiario();
        QFile f(diario);
        f.open(QIODevice::ReadOnly);
        modelo = f.readAll().trimmed();
    }
    QJsonObject linha = QJsonDocument::fromJson(modelo).object();
    QByteArray todas;
    for (int i = 2; i <= Impressos; ++i) {
        linha["papel"] = i;
        todas += QJsonDocument(linha).toJson(QJsonDocument::Compact) + '\n';
    }
    QFile f(diario);
    f.open(QIODevice::Append);
    f.write(todas);
    const QString papel = pasta + "/impressora/papel/";
    for (int i = 2; i <= Impressos; ++i)
        QFile(papel + QStringLiteral("%1.txt").arg(i, 6, 10, QChar(u'0')))
            .open(QIODevice::WriteOnly);
}

// The same print on a new printer and on one that printed 100,000 cheques, alternated so that
// the disk's moods fall on both alike: the medians, and their ratio in the bench's counters.
struct Comparacao {
    double msPrimeiro = 0, msDepois = 0, razao = 0;
};

Comparacao compara(benchmark::State &state, Simulador &primeiro, Simulador &depois,
                   double (*imprime_uma)(Simulador &)) {
    Comparacao c;
    for (auto _ : state) {
        std::vector<double> a, b;
        for (int i = 0; i < Amostras; ++i) {
            a.push_back(imprime_uma(primeiro));
            b.push_back(imprime_uma(depois));
        }
        c.msPrimeiro = mediana(a);
        c.msDepois = mediana(b);
        c.razao = c.msDepois / c.msPrimeiro;
    }
    state.counters["primeiro_ms"] = c.msPrimeiro;
    state.counters["apos_100000_ms"] = c.msDepois;
    state.counters["razao"] = c.razao;
    return c;
}

void SimuladorChequeApos100000(benchmark::State &state) {
    prepara_aplicacao();
    QTemporaryDir novo, cheio;
    QElapsedTimer relogio;
    relogio.start();
    enche(cheio.path());
    const double msEnche = relogio.nsecsElapsed() / 1e6;
    relogio.restart();
    auto depois = std::make_unique<Simulador>(cheio.path());
    const double msPartida = relogio.nsecsElapsed() / 1e6;
    auto primeiro = std::make_unique<Simulador>(novo.path());

    const Comparacao c = compara(state, *primeiro, *depois, imprime);
    std::printf("Impressora simulada: um cheque (porta aberta, cheque, porta fechada), mediana de "
                "%d:\n",
                Amostras);
    std::printf("  com a memória nova        %8.2f ms\n", c.msPrimeiro);
    std::printf("  depois de %d cheques  %8.2f ms   (%d no relatório)\n", Impressos, c.msDepois,
                int(depois->Relatorio().size()));
    std::printf("  razão                     %8.2f      (meta: até 1,20)\n", c.razao);
    std::printf("  partida com essa memória  %8.1f ms   (lê o diário inteiro)\n", msPartida);
    std::printf("  preparo dos %d cheques %6.0f ms\n\n", Impressos, msEnche);
}
BENCHMARK(SimuladorChequeApos100000)->Iterations(1)->Unit(benchmark::kMillisecond);

void SimuladorCopiaApos100000(benchmark::State &state) {
    prepara_aplicacao();
    QTemporaryDir novo, cheio;
    enche(cheio.path());
    Simulador depois(cheio.path()), primeiro(novo.path());
    const Comparacao c = compara(state, primeiro, depois, imprime_copia);
    std::printf(
        "Impressora simulada: uma cópia invertida de 21 linhas, com o PDF, mediana de %d:\n",
        Amostras);
    std::printf("  com a memória nova        %8.2f ms\n", c.msPrimeiro);
    std::printf("  depois de %d cheques  %8.2f ms\n", Impressos, c.msDepois);
    std::printf("  razão                     %8.2f      (meta: até 1,20)\n\n", c.razao);
}
BENCHMARK(SimuladorCopiaApos100000)->Iterations(1)->Unit(benchmark::kMillisecond);

void SimuladorPdfDaFace(benchmark::State &state) {
    prepara_aplicacao();
    QTemporaryDir pasta;
    Simulador imp(pasta.path());
    const QStringList face = imp.Face("001", "1.234,50", "Maria da Silva", "Santos", "05/03/24");
    QByteArray pdf;
    for (auto _ : state)
        benchmark::DoNotOptimize(pdf = pdf_face(face, "Cheque 000001"));
    if (pdf.isEmpty()) {
        state.SkipWithError("sem aplicação gráfica, não há PDF");
        return;
    }
    state.counters["bytes"] = pdf.size();
}
BENCHMARK(SimuladorPdfDaFace)->Unit(benchmark::kMillisecond);

} // namespace

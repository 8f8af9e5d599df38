// The import of the old program's large database (99,999 payees, 100,000 cheques) into a new
// data folder, in a child of its own so that its peak of memory is the import's alone; against
// the time mdb-export takes to read the same tables in the same run.
#include "medidas.h"

#include "core/desktop_roteiro.h"
#include "core/sessao.h"
#include "settings/importa.h"
#include "store/pasta_dados.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <cstdio>

using namespace vexa;
using namespace vexa::bench;

namespace {

const QString Grande = QStringLiteral(LEGADO "/VEXA-grande.MDB");

int importa_filho(const QStringList &a) {
    Sessao s(a.value(0));
    prepara_pasta_dados(s);
    DesktopRoteiro d;
    QElapsedTimer relogio;
    relogio.start();
    const bool ok = importa_pasta(s, d, a.value(1));
    std::printf("%d %.1f %ld\n", ok ? 1 : 0, relogio.nsecsElapsed() / 1e6, pico_proprio());
    return 0;
}

void mede_importacao() {
    QTemporaryDir pasta;
    const QString velha = pasta.path() + "/antigo";
    QDir().mkpath(velha);
    if (!QFile::copy(Grande, velha + "/VEXA.MDB")) return;
    QElapsedTimer relogio;
    relogio.start();
    for (const char *tabela :
         {"Bancos", "Transferencia", "Script", "Favorecido", "Cidade", "Log"}) {
        QProcess p;
        p.setStandardOutputFile(QProcess::nullDevice());
        p.start("mdb-export", {Grande, tabela});
        p.waitForFinished(60000);
    }
    const double exporta = relogio.nsecsElapsed() / 1e6;
    const QList<QByteArray> r =
        roda_filho("importa", {pasta.path() + "/dados", velha}).trimmed().split(' ');
    std::printf("Importar do Vexa antigo (VEXA-grande.MDB: 99.999 favorecidos, 100.000 "
                "cheques)%s:\n",
                r.value(0) == "1" ? "" : " FALHOU");
    linha("importação inteira (mdb-export na coluna SQLite)", r.value(1).toDouble(), exporta,
          "(meta: abaixo de 10.000 ms)");
    std::printf("  pico de memória   %8ld KiB (meta: abaixo de 300 MB)\n\n", r.value(2).toLong());
}

const bool registrada =
    registra_filho("importa", importa_filho) && registra_medida("7 importacao", mede_importacao);

} // namespace

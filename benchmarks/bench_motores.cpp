// The store and the report on both engines in the same run: each figure of PostgreSQL beside
// SQLite's on the same rows, and their ratio. The server is one of the bench's own, started
// for this measure on a Unix socket (tests/pg/servidor.sh) and stopped after it.
#include "medidas.h"

#include "cheque/frente.h"
#include "cheque/main.h"
#include "core/desktop_roteiro.h"
#include "core/ini.h"
#include "core/sessao.h"
#include "registers/favorec.h"
#include "reports/filtro.h"
#include "reports/relato.h"
#include "store/copia_registro.h"
#include "store/tabelas.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QUuid>
#include <cstdio>

using namespace vexa;
using namespace vexa::bench;

namespace {

const QString Servidor = QStringLiteral(VEXA_FONTES "/tests/pg/servidor.sh");

// A data folder on a new database of the bench's server, with the rows of a generated file.
bool pasta_no_servidor(const QString &pasta, const QString &socket, const QString &base) {
    const QString nome = "bench_" + QUuid::createUuid().toString(QUuid::Id128);
    {
        QSqlDatabase db = QSqlDatabase::addDatabase("QPSQL", nome);
        db.setHostName(socket);
        db.setDatabaseName("postgres");
        db.setUserName("vexa");
        if (!db.open() || !QSqlQuery(db).exec("CREATE DATABASE " + nome)) return false;
        db.close();
    }
    QSqlDatabase::removeDatabase(nome);
    prepara_pasta(pasta, {});
    for (const auto &[chave, valor] : {std::pair<QString, QString>{"Banco", "PostgreSQL"},
                                       {"Servidor", socket},
                                       {"BaseServidor", nome},
                                       {"UsuarioServidor", "vexa"}})
        LeGravaIni(pasta + "/VEXA.INI", "Sistema", chave, valor);
    Sessao s(pasta);
    ConfigBase arquivo;
    arquivo.Arquivo = base;
    const CopiaRegistro c = copia_registro(arquivo, le_config_base(s));
    if (!c.Copiado) std::printf("  %s", qPrintable(c.Relatorio()));
    // The planner's figures of the rows just written, and their visibility, as the server's
    // own maintenance leaves them.
    if (c.Copiado && base_dados(s).Abre()) QSqlQuery(base_dados(s).db()).exec("VACUUM ANALYZE");
    return c.Copiado;
}

// The same work on each engine's folder: [0] SQLite, [1] PostgreSQL.
void par(const char *oque, const QString (&pastas)[2], const char *meta,
         const std::function<double(const QString &)> &mede) {
    const double sqlite = mede(pastas[0]), servidor = mede(pastas[1]);
    linha(oque, servidor, sqlite, meta);
}

double abre_favorec(const QString &pasta) {
    return mediana_ms(5, [&] {
        Sessao s(pasta);
        DesktopRoteiro d;
        d.Abre(std::make_unique<Favorec>(s, d));
    });
}

double tecla_favorec(const QString &pasta) {
    Sessao s(pasta);
    DesktopRoteiro d;
    auto *f = static_cast<Favorec *>(d.Abre(std::make_unique<Favorec>(s, d)));
    return mediana_ms(5, [&] {
        f->Text2.Text = "M";
        f->Text2_Change();
        f->Text2.Text.clear();
    });
}

double grava(const QString &pasta) {
    Sessao s(pasta);
    DesktopRoteiro d;
    Main &m = cheque_na_tela(s, d);
    const double ms = mediana_ms(15, [&] { GravaCheque(m); });
    if (!d.Mensagens.isEmpty())
        std::printf("  GravaCheque avisou: %s\n", qPrintable(d.Mensagens[0].Texto));
    return ms;
}

double relatorio(const QString &pasta) {
    return mediana_ms(3, [&] {
        Sessao s(pasta);
        DesktopRoteiro d;
        abre_relato(s, d);
    });
}

double filtro_banco(const QString &pasta) {
    Sessao s(pasta);
    DesktopRoteiro d;
    Relato &r = abre_relato(s, d);
    return mediana_ms(3, [&] {
        MontaFiltroLog(s, d, "237", "", "", "", "", "", "", "");
        r.List1.List(0);
    });
}

void mede_motores() {
    QTemporaryDir dir(QDir::tempPath() + "/vexa-pg-bench-XXXXXX");
    const QString socket = dir.path() + "/s";
    // The server runs as another user, who must reach its folder.
    QFile::setPermissions(dir.path(), QFile::permissions(dir.path()) | QFile::ExeGroup |
                                          QFile::ExeOther | QFile::ReadOther);
    std::printf("PostgreSQL ao lado do SQLite (tempo do PostgreSQL, do SQLite e a razão):\n");
    if (QProcess::execute(Servidor, {"start", socket}) != 0) {
        std::printf("  servidor PostgreSQL não iniciado (pacote postgresql): medida pulada\n\n");
        return;
    }
    const auto pastas = [&socket](const QString &base, QTemporaryDir(&dirs)[2]) {
        prepara_pasta(dirs[0].path(), base);
        return pasta_no_servidor(dirs[1].path(), socket, base);
    };
    QTemporaryDir favorecidos[2], log[2], relato[2];
    if (pastas(base_favorecidos(), favorecidos)) {
        const QString p[2] = {favorecidos[0].path(), favorecidos[1].path()};
        par("abrir Favorec, 99.999 linhas", p, "(metas: 150 ms; até 3 vezes o SQLite)",
            abre_favorec);
        par("primeira tecla em \"Procurar por:\"", p, "(metas: 30 ms; até 3 vezes o SQLite)",
            tecla_favorec);
    }
    if (pastas(base_log(), log)) {
        const QString p[2] = {log[0].path(), log[1].path()};
        par("GravaCheque, Log com 1.000.000", p, "(meta: até 3 vezes o SQLite)", grava);
    }
    if (pastas(base_relatorio(), relato)) {
        const QString p[2] = {relato[0].path(), relato[1].path()};
        par("abrir o relatório, 250.000 linhas", p, "(metas: 500 ms; até 3 vezes o SQLite)",
            relatorio);
        par("filtro por banco (50.000 linhas)", p, "(metas: 100 ms; até 3 vezes o SQLite)",
            filtro_banco);
    }
    QProcess::execute(Servidor, {"stop", socket});
    std::printf("\n");
}

const bool registrada = registra_medida("8 motores", mede_motores);

} // namespace

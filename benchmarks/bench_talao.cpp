// The lookup of a cheque's number in its bank's rows, made before every print, in a register of
// 1,000,000 cheques: twenty banks, each number once per bank.
#include "medidas.h"

#include "core/sessao.h"
#include "store/talao.h"

#include <QElapsedTimer>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <cstdio>

using namespace vexa;
using namespace vexa::bench;

namespace {

constexpr int Linhas = 1000000, Buscas = 2000;

QString numero(int i) {
    return QStringLiteral("%1").arg(i / 20, 6, 10, QChar('0'));
}
QString banco(int i) {
    return QStringLiteral("%1").arg(i % 20 * 10 + 1, 3, 10, QChar('0'));
}

void mede_duplicado() {
    const QString base = base_gerada(
        "talao-1000000.db",
        "INSERT INTO Log (\"Index\", Codigo, Banco, V_CH, Favor, Data, NRCH, StCancel) VALUES "
        "(?, ?, ?, ?, ?, ?, ?, ?)",
        [](int i) {
            const QString index = QStringLiteral("%1").arg(i, 10, 10, QChar('0'));
            return QVariantList{index,   index.right(5), banco(i),  "10,5",
                                "Maria", "01/01/24",     numero(i), " "};
        },
        Linhas);
    QTemporaryDir pasta;
    prepara_pasta(pasta.path(), base);
    Sessao s(pasta.path());
    cheque_registrado(s, "001", "000000"); // the first opening brings the database up to date
    // Half the numbers are in the register, half past its end.
    const auto pedido = [](int k) { return k * 997 % (Linhas * 2); };
    QElapsedTimer relogio;
    relogio.start();
    int achados = 0;
    for (int k = 0; k < Buscas; ++k)
        achados += cheque_registrado(s, banco(pedido(k)), numero(pedido(k))).has_value();
    const double ms = relogio.nsecsElapsed() / 1e6 / Buscas;

    Conexao c(pasta.path() + "/VEXA.db");
    QSqlQuery q(c.db());
    q.prepare("SELECT \"Index\", Data, Favor, V_CH, StCancel FROM Log WHERE Banco = ? AND NRCH = ? "
              "ORDER BY rowid LIMIT 1");
    relogio.restart();
    int puros = 0;
    for (int k = 0; k < Buscas; ++k) {
        q.addBindValue(banco(pedido(k)));
        q.addBindValue(numero(pedido(k)));
        puros += q.exec() && q.next();
    }
    const double sqlite = relogio.nsecsElapsed() / 1e6 / Buscas;
    std::printf("Número já registrado: Log com %d linhas, %d buscas (%d e %d achadas):\n", Linhas,
                Buscas, achados, puros);
    linha("uma busca por banco e número", ms, sqlite, "meta < 5 ms");
    std::printf("\n");
}

const bool registrada = registra_medida("7 talao", mede_duplicado);

} // namespace

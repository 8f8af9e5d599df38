#include "store/historico.h"

#include "core/relogio.h"
#include "store/leitura_direta.h"
#include "store/motor.h"
#include "store/tabelas.h"

#include <QSqlQuery>
#include <QSysInfo>
#include <QVariant>
#include <pwd.h>
#include <sqlite3.h>
#include <unistd.h>

namespace vexa {

namespace {

QString acao_corrente;
// The server's connections open in this process: their triggers read the action from a
// setting of the connection.
QStringList conexoes_servidor;

void passa_acao_ao_servidor() {
    for (const QString &nome : conexoes_servidor) {
        if (!QSqlDatabase::contains(nome)) continue;
        QSqlDatabase db = QSqlDatabase::database(nome, false);
        if (!db.isOpen()) continue;
        QSqlQuery q(db);
        executa(q, "SELECT set_config('vexa.acao', ?, false)", {acao_corrente});
    }
}

void resultado_texto(sqlite3_context *ctx, const QString &texto) {
    const QByteArray b = texto.toUtf8();
    sqlite3_result_text(ctx, b.constData(), int(b.size()), SQLITE_TRANSIENT);
}

// The system user: the session's name, else the account the program runs under.
QString usuario() {
    QString u = qEnvironmentVariable("USER");
    if (u.isEmpty()) u = qEnvironmentVariable("USERNAME");
    if (u.isEmpty())
        if (const passwd *conta = getpwuid(geteuid())) u = QString::fromLocal8Bit(conta->pw_name);
    return u;
}

void sql_quando(sqlite3_context *ctx, int, sqlite3_value **) {
    resultado_texto(ctx, agora().toString("dd/MM/yyyy HH:mm:ss"));
}
void sql_usuario(sqlite3_context *ctx, int, sqlite3_value **) {
    resultado_texto(ctx, usuario());
}
void sql_maquina(sqlite3_context *ctx, int, sqlite3_value **) {
    resultado_texto(ctx, QSysInfo::machineHostName());
}
void sql_acao(sqlite3_context *ctx, int, sqlite3_value **argv) {
    if (!acao_corrente.isEmpty()) return resultado_texto(ctx, acao_corrente);
    const auto *p = reinterpret_cast<const char *>(sqlite3_value_text(argv[0]));
    resultado_texto(ctx, p ? QString::fromUtf8(p) : QString());
}

// The insert of an entry: the row's fields taken from `origem` ("OLD." in a trigger).
QString insere_entrada(const QString &acao, const QString &origem) {
    QStringList colunas, valores;
    for (const QString &c : campos_historico()) {
        colunas << '"' + c + '"';
        valores << origem + '"' + c + '"';
    }
    return "INSERT INTO Historico (Quando, Usuario, Maquina, Acao, " + colunas.join(',') +
           ") VALUES (historico_quando(), historico_usuario(), historico_maquina(), " +
           "historico_acao(" + acao + "), " + valores.join(',') + ")";
}

} // namespace

const QStringList &campos_historico() {
    static const QStringList c = {"Index",      "Codigo",      "Banco",       "V_CH",
                                  "Favor",      "Local",       "Data",        "NRCH",
                                  "Comentario", "Comentario1", "Comentario2", "StCancel"};
    return c;
}

void prepara_historico(QSqlDatabase &db) {
    if (eh_postgres(db)) {
        // The server's triggers are made with its tables.
        if (!conexoes_servidor.contains(db.connectionName()))
            conexoes_servidor.append(db.connectionName());
        if (!acao_corrente.isEmpty()) passa_acao_ao_servidor();
        return;
    }
    sqlite3 *s = conexao_sqlite(db);
    if (!s) return;
    const int f = SQLITE_UTF8;
    sqlite3_create_function(s, "historico_quando", 0, f, nullptr, sql_quando, nullptr, nullptr);
    sqlite3_create_function(s, "historico_usuario", 0, f, nullptr, sql_usuario, nullptr, nullptr);
    sqlite3_create_function(s, "historico_maquina", 0, f, nullptr, sql_maquina, nullptr, nullptr);
    sqlite3_create_function(s, "historico_acao", 1, f, nullptr, sql_acao, nullptr, nullptr);
    // Kept to this connection: another program writing the file is not held to functions it
    // hasn't.
    QStringList campos, mudou;
    for (const QString &c : campos_historico()) {
        campos << '"' + c + '"';
        mudou << "OLD.\"" + c + "\" IS NOT NEW.\"" + c + '"';
    }
    QSqlQuery q(db);
    q.exec("CREATE TEMP TRIGGER IF NOT EXISTS HistoricoExclui BEFORE DELETE ON main.Log BEGIN " +
           insere_entrada("'Exclusão'", "OLD.") + "; END");
    q.exec("CREATE TEMP TRIGGER IF NOT EXISTS HistoricoAltera BEFORE UPDATE OF " +
           campos.join(',') + " ON main.Log WHEN " + mudou.join(" OR ") + " BEGIN " +
           insere_entrada("CASE WHEN NEW.StCancel = 'C' AND OLD.StCancel IS NOT 'C' THEN "
                          "'Cancelamento' ELSE 'Alteração' END",
                          "OLD.") +
           "; END");
}

AcaoHistorico::AcaoHistorico(const QString &acao) : anterior_(acao_corrente) {
    acao_corrente = acao;
    passa_acao_ao_servidor();
}

AcaoHistorico::~AcaoHistorico() {
    acao_corrente = anterior_;
    passa_acao_ao_servidor();
}

bool grava_historico(Sessao &s, const QString &Index, const QString &Acao) {
    BaseDados &b = base_dados(s);
    if (!b.Abre()) return false;
    QStringList campos;
    for (const QString &c : campos_historico())
        campos << '"' + c + '"';
    QSqlQuery q(b.db());
    return executa(q,
                   "INSERT INTO Historico (Quando, Usuario, Maquina, Acao, " + campos.join(',') +
                       ") SELECT historico_quando(), historico_usuario(), historico_maquina(), "
                       "?, " +
                       campos.join(',') + " FROM Log WHERE \"Index\" = ?",
                   {Acao, Index});
}

namespace {
// The entries of the select, by the Index of each, in its order.
QHash<QString, QList<EntradaHistorico>> le_entradas(Sessao &s, const QString &onde,
                                                    const QVariantList &valores) {
    QHash<QString, QList<EntradaHistorico>> entradas;
    BaseDados &b = base_dados(s);
    if (!b.Abre()) return entradas;
    QSqlQuery q(b.db());
    q.setForwardOnly(true);
    if (!executa(q, "SELECT * FROM Historico" + onde + " ORDER BY Id", valores)) return entradas;
    while (q.next()) {
        EntradaHistorico e{q.value("Quando").toString(),
                           q.value("Usuario").toString(),
                           q.value("Maquina").toString(),
                           q.value("Acao").toString(),
                           {}};
        for (const QString &c : campos_historico())
            e.Linha.insert(c, q.value(c).toString());
        entradas[e.Linha.value("Index")].append(e);
    }
    return entradas;
}
} // namespace

QList<EntradaHistorico> historico_cheque(Sessao &s, const QString &Index) {
    if (Index.isEmpty()) return {};
    return le_entradas(s, " WHERE \"Index\" = ?", {Index}).value(Index);
}

QHash<QString, QList<EntradaHistorico>> historico_completo(Sessao &s) {
    return le_entradas(s, QString(), {});
}

} // namespace vexa

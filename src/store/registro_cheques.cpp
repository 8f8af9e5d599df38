#include "store/registro_cheques.h"

#include "core/conversoes.h"
#include "store/tabelas.h"

#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace vexa {

namespace {

const char *const CamposPendente =
    "Banco, Valor, Favor, Local, Data, NRCH, Comentario, Comentario1, Comentario2, Parcela";

// Why the database refused: the primary result code of SQLite, whatever its extension.
EstadoRegistro causa(const QSqlError &erro, const QString &arquivo) {
    switch (erro.nativeErrorCode().toInt() & 0xff) {
    case 5: // busy
    case 6: // locked
        return EstadoRegistro::Travado;
    case 8:  // read-only
    case 10: // input or output
    case 13: // full
        return EstadoRegistro::SemGravacao;
    default:
        return QFileInfo(arquivo).isWritable() ? EstadoRegistro::Danificado
                                               : EstadoRegistro::SemGravacao;
    }
}

// The database open, or why not.
EstadoRegistro abre(Sessao &s) {
    BaseDados &b = base_dados(s);
    if (!QFileInfo(b.Caminho()).isFile()) return EstadoRegistro::Ausente;
    if (b.Abre()) return EstadoRegistro::Gravado;
    return b.Travada() ? EstadoRegistro::Travado : EstadoRegistro::Danificado;
}

bool executa(QSqlQuery &q, const QString &sql, const QVariantList &valores = {}) {
    if (!q.prepare(sql)) return false;
    for (const QVariant &v : valores)
        q.addBindValue(v);
    return q.exec();
}

// The row of Log of a cheque under the next Index, inside the caller's transaction.
bool insere_log(Sessao &s, QSqlQuery &q, const ChequeImpresso &c, QString *Registrado = nullptr) {
    // An instalment goes on from the last row of Log; a single cheque looks at the first.
    const QString Index =
        proximo_index(s, c.Parcela ? LinhaConferida::Ultima : LinhaConferida::Primeira);
    const QString Codigo = Index.right(5);
    if (Registrado) *Registrado = Index;
    QString NRCH = c.Numero;
    if (NRCH.isEmpty()) NRCH = c.Parcela ? "SEQ:" + Codigo : QStringLiteral(" ");
    // A cheque that came out wrong stays, cancelled, with its note in a free comment line.
    QStringList comentarios{c.Comentarios.value(0), c.Comentarios.value(1), c.Comentarios.value(2)};
    if (!c.Nota.isEmpty()) {
        const qsizetype livre = comentarios.indexOf(QString());
        if (livre >= 0)
            comentarios[livre] = c.Nota;
        else
            comentarios[2] = c.Nota + " - " + comentarios[2];
    }
    return executa(q,
                   "INSERT INTO Log (Comentario, Comentario1, Comentario2, StCancel, Codigo, "
                   "Banco, V_CH, Favor, Local, Data, \"Index\", NRCH) "
                   "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
                   {comentarios[0], comentarios[1], comentarios[2],
                    QString(c.Nota.isEmpty() ? " " : "C"), Codigo, c.Banco,
                    mascara_valor(c.Valor, "###########.##").trimmed(), c.Favorecido, c.Cidade,
                    c.Data, Index, NRCH});
}

// Runs the writes of `corpo` in one transaction that holds the write lock from its start, so
// that the Index read and the row written can't interleave with another writer.
template <typename Corpo> EstadoRegistro transacao(Sessao &s, const Corpo &corpo) {
    const EstadoRegistro aberta = abre(s);
    if (aberta != EstadoRegistro::Gravado) return aberta;
    BaseDados &b = base_dados(s);
    QSqlQuery q(b.db());
    if (!q.exec("BEGIN IMMEDIATE")) return causa(q.lastError(), b.Caminho());
    QSqlError erro;
    bool ok = corpo(q);
    if (!ok) erro = q.lastError();
    q.finish();
    if (ok && !q.exec("COMMIT")) {
        ok = false;
        erro = q.lastError();
    }
    if (!ok) {
        QSqlQuery(b.db()).exec("ROLLBACK");
        return causa(erro, b.Caminho());
    }
    return EstadoRegistro::Gravado;
}

} // namespace

void cria_tabela_pendentes(QSqlDatabase &db) {
    QSqlQuery q(db);
    if (q.exec("SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = 'Pendente'") &&
        q.next())
        return;
    q.finish();
    q.exec(QStringLiteral("CREATE TABLE Pendente (Id INTEGER PRIMARY KEY AUTOINCREMENT, %1)")
               .arg(QString(CamposPendente).replace(",", " TEXT,") + " TEXT"));
}

EstadoRegistro grava_pendente(Sessao &s, const ChequeImpresso &c, qint64 &Id) {
    return transacao(s, [&](QSqlQuery &q) {
        if (!executa(q,
                     QStringLiteral("INSERT INTO Pendente (%1) VALUES (?,?,?,?,?,?,?,?,?,?)")
                         .arg(CamposPendente),
                     {c.Banco, c.Valor, c.Favorecido, c.Cidade, c.Data, c.Numero,
                      c.Comentarios.value(0), c.Comentarios.value(1), c.Comentarios.value(2),
                      c.Parcela ? "1" : "0"}))
            return false;
        Id = q.lastInsertId().toLongLong();
        return true;
    });
}

QList<ChequePendente> cheques_pendentes(Sessao &s) {
    QList<ChequePendente> pendentes;
    if (abre(s) != EstadoRegistro::Gravado) return pendentes;
    QSqlQuery q(base_dados(s).db());
    if (!q.exec(QStringLiteral("SELECT Id, %1 FROM Pendente ORDER BY Id").arg(CamposPendente)))
        return pendentes;
    while (q.next()) {
        ChequePendente p;
        p.Id = q.value(0).toLongLong();
        ChequeImpresso &c = p.Cheque;
        c.Banco = q.value(1).toString();
        c.Valor = q.value(2).toString();
        c.Favorecido = q.value(3).toString();
        c.Cidade = q.value(4).toString();
        c.Data = q.value(5).toString();
        c.Numero = q.value(6).toString();
        c.Comentarios = {q.value(7).toString(), q.value(8).toString(), q.value(9).toString()};
        c.Parcela = q.value(10).toString() == "1";
        pendentes.append(p);
    }
    return pendentes;
}

bool registra_pendente(Sessao &s, qint64 Id, const QString &Nota, QString *Index) {
    ChequeImpresso cheque;
    bool achou = false;
    for (const ChequePendente &p : cheques_pendentes(s))
        if (p.Id == Id) {
            cheque = p.Cheque;
            achou = true;
        }
    if (!achou) return false;
    cheque.Nota = Nota;
    return transacao(s, [&](QSqlQuery &q) {
               return insere_log(s, q, cheque, Index) &&
                      executa(q, "DELETE FROM Pendente WHERE Id = ?", {Id});
           }) == EstadoRegistro::Gravado;
}

bool descarta_pendente(Sessao &s, qint64 Id) {
    return transacao(s, [&](QSqlQuery &q) {
               return executa(q, "DELETE FROM Pendente WHERE Id = ?", {Id});
           }) == EstadoRegistro::Gravado;
}

EstadoRegistro registra_cheque(Sessao &s, const ChequeImpresso &Cheque) {
    return transacao(s, [&](QSqlQuery &q) { return insere_log(s, q, Cheque); });
}

} // namespace vexa

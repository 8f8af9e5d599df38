#include "store/registro_cheques.h"

#include "core/conversoes.h"
#include "store/tabelas.h"

#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace vexa {

namespace {

// Why the database refused: the primary result code of SQLite, whatever its extension; on a
// server, its state code.
EstadoRegistro causa(const QSqlError &erro, const BaseDados &b) {
    if (b.NoServidor()) {
        if (erro_de_conexao(erro) || conexao_perdida(b.db())) return EstadoRegistro::Ausente;
        const QString codigo = erro.nativeErrorCode();
        if (codigo == "55P03" || codigo == "40P01") return EstadoRegistro::Travado;
        if (codigo == "53100" || codigo == "25006") return EstadoRegistro::SemGravacao;
        return EstadoRegistro::Danificado;
    }
    const QString arquivo = b.Caminho();
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
    // A server that can't be reached is told as a database that isn't there.
    if (!b.NoServidor() && !QFileInfo(b.Caminho()).isFile()) return EstadoRegistro::Ausente;
    if (b.Abre()) return EstadoRegistro::Gravado;
    if (b.NoServidor()) return EstadoRegistro::Ausente;
    return b.Travada() ? EstadoRegistro::Travado : EstadoRegistro::Danificado;
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
// that the Index read and the row written can't interleave with another writer: SQLite's lock
// of the file, or on the server a lock of Log that writers take one at a time and readers
// pass. A desk waits for that lock ten seconds at most.
template <typename Corpo> EstadoRegistro transacao(Sessao &s, const Corpo &corpo) {
    const EstadoRegistro aberta = abre(s);
    if (aberta != EstadoRegistro::Gravado) return aberta;
    BaseDados &b = base_dados(s);
    QSqlQuery q(b.db());
    if (!q.exec(b.NoServidor() ? "BEGIN" : "BEGIN IMMEDIATE")) return causa(q.lastError(), b);
    if (b.NoServidor() && (!q.exec("SET LOCAL lock_timeout = '10s'") ||
                           !q.exec("LOCK TABLE log IN SHARE ROW EXCLUSIVE MODE"))) {
        const QSqlError erro = q.lastError();
        QSqlQuery(b.db()).exec("ROLLBACK");
        return causa(erro, b);
    }
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
        return causa(erro, b);
    }
    return EstadoRegistro::Gravado;
}

} // namespace

void cria_tabela_pendentes(QSqlDatabase &db) {
    if (eh_postgres(db)) return; // made with the server's tables
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
                             .arg(CamposPendente) +
                         retorna_id(base_dados(s).db(), "Id"),
                     {c.Banco, c.Valor, c.Favorecido, c.Cidade, c.Data, c.Numero,
                      c.Comentarios.value(0), c.Comentarios.value(1), c.Comentarios.value(2),
                      c.Parcela ? "1" : "0"}))
            return false;
        Id = id_inserido(q);
        return true;
    });
}

QList<ChequePendente> cheques_pendentes(Sessao &s) {
    QList<ChequePendente> pendentes;
    if (abre(s) != EstadoRegistro::Gravado) return pendentes;
    QSqlQuery q(base_dados(s).db());
    // On the server, this desk's alone.
    const QString desta = base_dados(s).NoServidor()
                              ? QStringLiteral(" WHERE mesa = current_setting('vexa.mesa', true)")
                              : QString();
    if (!q.exec(
            QStringLiteral("SELECT Id, %1 FROM Pendente%2 ORDER BY Id").arg(CamposPendente, desta)))
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

#include "store/consulta_log.h"

#include "core/relogio.h"
#include "store/basedados.h"
#include "store/leitura_direta.h"
#include "store/motor.h"

#include <QHash>
#include <QRegularExpression>
#include <QSqlQuery>
#include <cmath>
#include <sqlite3.h>

namespace vexa {

namespace {

// The select's condition, without its order: " Where ..." or empty.
QString condicao(const QString &sql) {
    static const QRegularExpression re(
        R"(^\s*select\s+\*\s+from\s+\[?log\]?(.*?)(\s+order\s+by\s+.*)?$)",
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    const auto m = re.match(sql);
    return m.hasMatch() ? m.captured(1).trimmed() : QString();
}

// The folded key of a name as the sort's key, made once per row rather than once per
// comparison; a register repeats its payees and cities, so each name is folded once. The
// server has a function of the same name.
void sql_vexa_chave(sqlite3_context *ctx, int, sqlite3_value **argv) {
    static QHash<QByteArray, QByteArray> feitas;
    const auto *p = reinterpret_cast<const char *>(sqlite3_value_text(argv[0]));
    if (!p) return sqlite3_result_null(ctx);
    const int n = sqlite3_value_bytes(argv[0]);
    auto i = feitas.constFind(QByteArray::fromRawData(p, n));
    if (i == feitas.constEnd()) {
        if (feitas.size() > 200000) feitas.clear();
        i = feitas.insert(QByteArray(p, n), chave_texto(QString::fromUtf8(p, n)).toUtf8());
    }
    sqlite3_result_text(ctx, i->constData(), int(i->size()), SQLITE_TRANSIENT);
}

// An amount of the register as a number: in SQLite the plain "1234,5" by SQL alone, any other
// form through the program's own reading; on the server by its own CDBL.
QString valor_sql(bool servidor) {
    return servidor ? QStringLiteral("CDBL(V_CH)")
                    : QStringLiteral("(CASE WHEN instr(V_CH, '.') = 0 THEN "
                                     "CAST(replace(V_CH, ',', '.') AS REAL) ELSE CDBL(V_CH) END)");
}

QString ordem(int coluna, bool servidor) {
    using namespace ColunaLog;
    switch (coluna) {
    case -1:
        return QStringLiteral("\"Index\"");
    case Situacao:
        return QStringLiteral("StCancel");
    case Numero:
        // Numbers as numbers; a number with letters after the plain ones.
        return servidor ? QStringLiteral("CDBL(NRCH) %1, NRCH")
                        : QStringLiteral("CAST(trim(NRCH) AS INTEGER) %1, NRCH");
    case BancoLog:
        return QStringLiteral("Banco");
    case Valor:
        return valor_sql(servidor);
    case DataLog: {
        // Two-digit years in the order of their centuries, as the program reads a date: the
        // years from the first of the earlier century on come first.
        int anterior = 0;
        for (int aa = 1; aa < 100; ++aa)
            if (ano_completo(aa) < ano_completo(anterior)) anterior = aa;
        return QString("(CASE WHEN substr(%1, 1, 2) >= '%2' THEN 0 ELSE 1 END) %3, %1")
            .arg(ColunaDataChave)
            .arg(anterior, 2, 10, QLatin1Char('0'))
            .arg("%1");
    }
    case Favorecido:
        return QStringLiteral("vexa_chave(Favor)");
    case Cidade:
        return QStringLiteral("vexa_chave(Local)");
    default:
        return QStringLiteral("vexa_chave(Comentario)");
    }
}

} // namespace

bool ordena_log(RecordSet &rs, const RecordSet &base, int coluna, bool crescente) {
    const QString sentido = crescente ? QStringLiteral(" ASC") : QStringLiteral(" DESC");
    const bool servidor = eh_postgres(base.Base());
    QString por = ordem(coluna, servidor);
    por = por.contains("%1") ? por.arg(sentido) + sentido : por + sentido;
    const QString onde = condicao(base.Sql());
    if (sqlite3 *c = conexao_sqlite(base.Base()))
        sqlite3_create_function(c, "vexa_chave", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                                sql_vexa_chave, nullptr, nullptr);
    const QString sql = "Select * From Log" + (onde.isEmpty() ? QString() : " " + onde) +
                        " Order by " + por + ", \"Index\"" + sentido;
    return rs.Abre(base.Base(), sql, base.Valores());
}

bool somas_mensais(const RecordSet &base, QList<SomaMensal> &somas) {
    somas.clear();
    QString onde = condicao(base.Sql());
    const QString valida = QString("%1 <> ''").arg(ColunaDataChave);
    onde = onde.isEmpty() ? " WHERE " + valida : " " + onde + " AND " + valida;
    QSqlQuery q(base.Base());
    q.setForwardOnly(true);
    // Whole centavos per cheque, so that the sum is the one a column of the list adds up.
    const QString centavos =
        "CAST(round(" + valor_sql(eh_postgres(base.Base())) + " * 100) AS INTEGER)";
    if (!prepara(q,
                 QString("SELECT substr(%1,1,4) AS mes, Banco, SUM(%3) FROM Log%2 "
                         "AND coalesce(StCancel,'') <> 'C' GROUP BY mes, Banco ORDER BY mes, Banco")
                     .arg(ColunaDataChave, onde, centavos),
                 base.Valores()))
        return false;
    if (!q.exec()) return false;
    while (q.next())
        somas.append({q.value(0).toString(), q.value(1).toString(), q.value(2).toLongLong()});
    return true;
}

} // namespace vexa

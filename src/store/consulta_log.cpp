#include "store/consulta_log.h"

#include <QRegularExpression>
#include <QSqlQuery>
#include <cmath>

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

QString ordem(int coluna) {
    using namespace ColunaLog;
    switch (coluna) {
    case -1:
        return QStringLiteral("\"Index\"");
    case Situacao:
        return QStringLiteral("StCancel");
    case Numero:
        // Numbers as numbers; a number with letters after the plain ones.
        return QStringLiteral("CAST(trim(NRCH) AS INTEGER) %1, NRCH COLLATE TEXTO");
    case BancoLog:
        return QStringLiteral("Banco");
    case Valor:
        return QStringLiteral("CDBL(V_CH)");
    case DataLog:
        return QString(ColunaDataChave);
    case Favorecido:
        return QStringLiteral("Favor COLLATE TEXTO");
    case Cidade:
        return QStringLiteral("Local COLLATE TEXTO");
    default:
        return QStringLiteral("Comentario COLLATE TEXTO");
    }
}

} // namespace

bool ordena_log(RecordSet &rs, const RecordSet &base, int coluna, bool crescente) {
    const QString sentido = crescente ? QStringLiteral(" ASC") : QStringLiteral(" DESC");
    QString por = ordem(coluna);
    por = por.contains("%1") ? por.arg(sentido) + sentido : por + sentido;
    const QString onde = condicao(base.Sql());
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
    if (!q.prepare(QString("SELECT substr(%1,1,4) AS mes, Banco, "
                           "SUM(CAST(round(CDBL(V_CH) * 100) AS INTEGER)) FROM Log%2 "
                           "AND ifnull(StCancel,'') <> 'C' GROUP BY mes, Banco ORDER BY mes, Banco")
                       .arg(ColunaDataChave, onde)))
        return false;
    for (const QVariant &v : base.Valores())
        q.addBindValue(v);
    if (!q.exec()) return false;
    while (q.next())
        somas.append({q.value(0).toString(), q.value(1).toString(), q.value(2).toLongLong()});
    return true;
}

} // namespace vexa

#pragma once
// The arithmetic of a schedule of post-dated cheques: one total spread over the instalments,
// each due some days after a start date, and the fixed day of the month. Amounts in centavos.
#include <QDate>
#include <QList>
#include <QString>

namespace vexa {

// valor / partes to the centavo, rounded half away from zero.
qint64 divide_centavos(qint64 valor, int partes);

// The amounts of n instalments: each the total's share through the two-decimal rounding, and the
// whole difference of that rounding on the first, up or down (100,00 in 3: 33,34 33,33 33,33;
// 200,00 in 3: 66,66 66,67 66,67). Empty for no instalment.
QList<qint64> divide_total(qint64 total, int n);

// The due date of an instalment: calendar days after the start, as "dd/mm/aa".
QString vencimento(const QDate &inicio, int dias);

// A due date "dd/mm/aa" moved to a fixed day of its month (Dia: two digits). A day the month
// doesn't have falls back: in February to the 29th, in a month of 30 days from the 31st to the
// 30th. The month and the year never change.
QString dia_fixo(const QString &Data, const QString &Dia);

} // namespace vexa

#pragma once
// The register of issued cheques seen as a table: its select in the order of any column, and
// the amounts of its cheques by month and bank. The work is done by the database, so that a
// register of years sorts and sums without its rows being read one by one.
#include "store/recordset.h"

#include <QList>
#include <QString>

namespace vexa {

// The columns of the register's table, in their order on the screen and in the spreadsheets.
// Their names stand apart, as the screens and tables of the same names do.
namespace ColunaLog {
enum : int { Situacao, Numero, BancoLog, Valor, DataLog, Favorecido, Cidade, Comentario };
}
inline constexpr int ColunasLog = 8;

// Opens in rs the select of base (a select over Log) in the order of a column (-1: the key's
// own order): amounts as
// numbers, dates as dates, texts without case or accents; equal values in the order of the
// key. False when the select failed (rs then closed).
bool ordena_log(RecordSet &rs, const RecordSet &base, int coluna, bool crescente);

// The amount of the cheques not cancelled of one bank in one month.
struct SomaMensal {
    QString Mes; // "aamm", as the cheque's date sorts
    QString Banco;
    qint64 Centavos = 0;
    bool operator==(const SomaMensal &) const = default;
};
// The sums of the cheques of a select over Log, by month of the cheque's date and by bank,
// the months in order. Cheques without a valid date are left out. False when the query failed.
bool somas_mensais(const RecordSet &base, QList<SomaMensal> &somas);

} // namespace vexa

#pragma once
// What the conversion files share among themselves and nobody else: the two mask readers that
// Format hands a number or a date mask to, and the digit test.
#include <QString>

namespace vexa {

inline bool eh_digito(QChar c) {
    return c >= u'0' && c <= u'9';
}

// Format over a number mask ("###,##0.00", "000"...); a value that isn't a number in
// invariant form comes back as it is.
QString formata_mascara_numero(const QString &valor, const QString &mascara);
// Format over a date mask ("dd/mm/yyyy"...); a text that isn't a date comes back as it is.
QString formata_mascara_data(const QString &valor, const QString &mascara);

} // namespace vexa

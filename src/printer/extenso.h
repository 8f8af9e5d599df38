#pragma once
// The amount in words, as the cheque printer writes it on a cheque and into Extenso.ret.
#include <QString>

namespace vexa {

// The largest amount the printer spells out: 9.999.999.999,99.
constexpr qint64 ExtensoMaximo = 999999999999;

// The amount in Brazilian Portuguese words, Title Case with "e" and "de" in lower case:
// "Mil e Cem Reais", "Nove Mil, Novecentos e Noventa e Nove Reais", "Um Milhão de Reais",
// "Um Real e Um Centavo", "Cinquenta Centavos". The currency names get a capital first letter
// on each word but "e" and "de", and are otherwise kept as passed; the singular is used for
// exactly one unit. Zero cents have no words.
// Outside 0,01 to 9.999.999.999,99 the result is empty.
QString extenso(qint64 centavos, const QString &singular = "real", const QString &plural = "reais");

} // namespace vexa

#pragma once
// The conversions every road shares: display masks, typed amounts and dates, the month's
// name, the split of the amount in words, and the printer's character codes.
#include <QByteArray>
#include <QDate>
#include <QPair>
#include <QString>
#include <optional>

namespace vexa {

// Shows a value through one of the program's masks, with Brazilian separators (a point
// groups thousands, a comma stands before the decimals).
// - Number masks, made of "0", "#", "," and ".": valor is a number in invariant form
//   ("1234.5", "-3", "1e3"). Rounds half away from zero on the digits shown; "," anywhere in
//   the whole part groups by threes; "0" is a digit always shown, "#" one shown only when
//   needed, so "###########.##" gives "1234,5" for 1234.5 and "1234," for 1234, and ".00"
//   gives "1234,00". A text that isn't a number comes back as it is.
// - Text masks, with "@" (a character or a blank) and "&" (a character or nothing): the text
//   fills the placeholders from the right, and what doesn't fit stands in front; a leading
//   "!" fills them from the left and drops what doesn't fit. "@@/@@/@@" on "10203" gives
//   " 1/02/03".
// - Date masks of "D", "M" and "Y" in either case ("DD/MM/YY", "dd/mm/yyyy"): valor is a
//   date text as le_data reads it. "YY" and "YYY" give two digits of the year, "YYYY" four.
//   A text that isn't a date comes back as it is.
QString Format(const QString &valor, const QString &mascara);

// The date check of typed dates: day in characters 1-2, month in 3-4, year from 5 (an absent
// year is 0). Every year divisible by 4, and 0, is a leap year. Slashes make a date invalid.
bool DataValida(const QString &Data);

// "1" to "12" (no leading zero) give the month's name; anything else gives "ERRO".
QString MesExtenso(const QString &Mes);

// The amount in words over the cheque's two lines: the first has at most 80 characters and
// breaks at a blank. The words end at a zero character, as MontaExtenso leaves them.
QPair<QString, QString> QuebraExtenso(const QString &ValorExtenso);

// The printer's code for a character given by its Windows-1252 code; 65535 when the
// character goes out unchanged.
int CodigoImpressora(int codigo);

// The text in the printer's codes, one character for each: a converted character is the one
// that encodes, in Windows-1252, to the printer's byte. Applied once, on the way out.
QString ConverteTexto(const QString &Texto);

// Windows-1252, the code page of the settings file and of the printer library's texts. The
// five codes the page leaves free map to the control characters of the same number, so that
// every byte goes and comes back unchanged; a character outside the page becomes "?".
QByteArray para_ansi(const QString &texto);
QString de_ansi(const QByteArray &bytes);

// The leading number of a text, in invariant form: blanks anywhere are skipped, reading stops
// at the first character that can't continue the number. "12abc" gives 12, "abc" 0,
// " 1 2" 12, "-2" -2, "12,5" 12. For texts of digits only: days, lines, columns, codes.
double Val(const QString &texto);

// The numeric test of typed amounts, by the Brazilian format: blanks around, an optional
// sign, an optional "R$", digits with points between them ("1.234"), and an optional comma
// with decimals. "1.234,56", "1234,56", ",5", "12," and " 12 " are numbers; "", "12x",
// "1,2,3" and "1 234" are not. A text without a comma that ends in a point and one or two
// digits has its decimals after that point, as typed on a keyboard of another country:
// "1234.56" is 1.234,56 and "0.5" is 0,50, while "1.234" and "1.234.567" group thousands.
bool eh_numerico(const QString &texto);
// The amount of a typed text in centavos, rounded half away from zero; empty when the text
// fails eh_numerico or is too large.
std::optional<qint64> centavos(const QString &texto);
// The value of a typed number as a double; 0 when it fails eh_numerico.
double valor_numerico(const QString &texto);

// Format over an amount in centavos, or over a double (taken at 15 significant digits, so
// that a sum such as 0.1 + 0.2 shows as 0,30).
QString formata_centavos(qint64 centavos, const QString &mascara);
// An amount as typed or as the register keeps it ("1.234,5", "1234,") through a number mask; a
// text that isn't an amount goes through Format as it is.
QString mascara_valor(const QString &texto, const QString &mascara);
QString formata_numero(double valor, const QString &mascara);

// The short forms of a typed date: one or two characters are a day of MesAno ("mmaa"), so
// "5" gives "05" + MesAno; seven or more characters give characters 1-2, 4-5 and 7-8
// ("05/03/99" gives "050399"); any other text comes back as it is.
QString data_curta(const QString &texto, const QString &MesAno);

// A date text: "dd/mm/yy", "d/m/yyyy" (also with "-" or "."), "ddmmyy", "ddmmyyyy" or
// "yyyy-mm-dd". A two-digit year falls within 80 years back and 20 ahead of today.
std::optional<QDate> le_data(const QString &texto);
// Days from one date text to another (positive when "ate" is later); empty when either
// isn't a date.
std::optional<qint64> dias_entre(const QString &de, const QString &ate);

} // namespace vexa

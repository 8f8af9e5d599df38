#pragma once
// Requests from other programs: the fields of a cheque on the command line. A request fills
// the entry screen and never prints; the operator reviews it and prints.
#include <QString>
#include <QStringList>

namespace vexa {

class Main;

// The command line "/B001/V1234,50/FMaria/LSantos/D050399/C000123" as seven texts indexed as
// the entry screen's Text1 (bank, amount, payee, city, date, none, number). A slash ends a
// value, so a date goes as six digits; other letters are dropped; text ahead of the first
// slash is ignored.
QStringList LeLinhaComando(const QString &Linha);

// Stores one option in Parametros (seven texts): the letter in either case, the value
// trimmed. An unknown letter stores nothing.
void GuardaParametro(QStringList &Parametros, const QString &Letra, const QString &Valor);

// Moves the request's texts into the entry screen's fields as if typed and left: the size
// limits cut them, then each field is normalised as on leaving it (bank with its name, amount
// through its mask, date as "dd/mm/aa"). Each text is emptied as it is moved.
void AplicaParametros(Main &Tela);

} // namespace vexa

#pragma once
// The cheque book of each bank: the number of its next cheque, the lookup of a number already
// in the register, and the leaf that came out of the printer spoiled.
#include "core/sessao.h"

#include <QString>
#include <optional>

namespace vexa {

// The cheque's number after this one: its last digits plus one, in as many digits ("000123"
// gives "000124", "A-099" gives "A-100"). None when it doesn't end in digits.
std::optional<QString> proximo_numero(const QString &numero);

// The number of the bank's next cheque; empty when none is kept or it can't be read.
QString proximo_cheque(Sessao &s, const QString &Banco);
// Keeps it (empty: none). False when the database refused.
bool grava_proximo_cheque(Sessao &s, const QString &Banco, const QString &Numero);
// A cheque of this number went out on a leaf of the bank's book: the book moves on to the number
// after it, unless it already stands further on. A number that doesn't end in digits moves
// nothing.
bool avanca_talao(Sessao &s, const QString &Banco, const QString &Numero);

// A cheque of the register, as a question names it.
struct ChequeRegistrado {
    QString Index, Data, Favorecido, Valor;
    bool Cancelado = false;
};
// The first row of Log of the bank with that number, valid or cancelled; none for an empty
// number, when there is none, or when the register can't be read.
std::optional<ChequeRegistrado> cheque_registrado(Sessao &s, const QString &Banco,
                                                  const QString &Numero);
// A number already in the register, and the earlier cheque: its date, payee, amount, and
// whether it was cancelled.
QString descreve_duplicado(const QString &Numero, const ChequeRegistrado &Anterior);

// The comment a spoiled leaf leaves on its row.
inline const QString FolhaInutilizada = QStringLiteral("folha inutilizada");
// The row of that Index is cancelled with the reason in its comment (the first empty line, or
// after the last one). False when there is no such row or the database refused.
bool inutiliza_folha(Sessao &s, const QString &Index);

} // namespace vexa

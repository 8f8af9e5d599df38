#pragma once
// The rules of the entry fields that every cheque screen shares: the typed date, Enter to the
// next field, the size cut of text that arrives otherwise than typed, and the question before a
// document goes into the printer.
#include "core/desktop.h"
#include "core/tela.h"

#include <QString>
#include <optional>
#include <vector>

namespace vexa {

// A typed date in its "dd/mm/aa" form, or nothing when it is no date. Empty is today; one or two
// characters are that day of MesAno ("mmaa"); a text with two slashes is day, month and year
// ("1/2/03", "01/02/2003"); eight characters or more without slashes lose the century
// ("05031999"). Only six digits that DataValida accepts make a date: "0102", without a year,
// does not.
std::optional<QString> data_digitada(const QString &texto, const QString &MesAno);

// The largest amount a cheque holds, 9.999.999.999,99, in centavos, and the refusal of a larger
// one: the size limit of the field would otherwise cut it into another number.
constexpr qint64 ValorMaximoCheque = 999'999'999'999;
extern const QString MensagemValorMaximo;

// Enter in `campo` moves the focus to the control after it in `ordem`, and the key is spent; at
// the last of the order the focus stays. True when the key was Enter in a control of the order;
// any other key or control is left alone.
bool enter_avanca(Tela &tela, const RefControle &campo, int &KeyCode,
                  const std::vector<RefControle> &ordem);

// Text that reached a field otherwise than by typing (a stored line, a pick of the search, a
// request from another program) is held to the field's size: at `ate` characters or more it is
// cut to `corta`, after "Tamanho Máximo deste campo..." under "Erro". True when it cut.
bool corta_tamanho(Tela &tela, Controle &campo, int ate, int corta);

// "Insira o Documento.", with OK and Cancel, and below it which document when one is named:
// true when the operator answered OK.
bool pede_documento(Desktop &d, const QString &titulo, Icone icone = Icone::Informacao,
                    const QString &documento = QString());

} // namespace vexa

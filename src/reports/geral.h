#pragma once
// The general report file: every field of each cheque of the current set of Log rows, the
// comments included, as text for a word processor or a spreadsheet.
#include "core/desktop.h"
#include "core/sessao.h"

#include <QString>

namespace vexa {

// The report's text, lines ended by CR LF: the title, then each cheque of the current set of
// Log rows in its order, closed by a line of 56 stars. lido, when given, tells whether the
// register and its banks could be read (false: the text is not the report).
// ComHistorico: each cheque is followed by its history, one line an entry. With a progress
// whose Cancelar was pressed the text is empty.
QString texto_relatorio_geral(Sessao &s, bool *lido = nullptr, bool ComHistorico = false,
                              Progresso *p = nullptr);

// "Criar Agora": asks where to write the report, writes it whole, and says it is done.
void cria_relatorio_geral(Sessao &s, Desktop &d);

} // namespace vexa

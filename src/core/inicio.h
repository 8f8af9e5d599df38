#pragma once
// Start and stop of a run: the settings the start-up reads, the welcome of a new data folder,
// and the state written back at exit.
#include "core/desktop.h"
#include "core/sessao.h"

#include <functional>

namespace vexa {

// The settings part of the start-up, in its order: what an interrupted write left in the
// data folder (core/restos), paths and names, the report box (returned:
// true when it is ticked), the port, the retention periods and the copy option, the day of
// the run, and the field flags. The numeric options read later in the start-up come from
// le_opcoes_numericas.
bool inicia_configuracoes(Sessao &s);
// The cheque-number obligation and the cheques per page of the printed lists.
void le_opcoes_numericas(Sessao &s);

// Opens the printer configuration screen. The start hands it in, so that the start knows no
// screen.
using AbreConfiguracao = std::function<void()>;

// The welcome of a new data folder, about five seconds after the start: OK opens the printer
// configuration and the welcome doesn't come again; Cancel leaves it for the next start.
void PrimeiraVez(Sessao &s, Desktop &d, const AbreConfiguracao &abreConfiguracao = {});

// Writes the state of the report box to InRel ("1" ticked, "0" not).
void grava_in_rel(Sessao &s, bool marcado);

} // namespace vexa

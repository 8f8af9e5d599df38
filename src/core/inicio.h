#pragma once
// Start and stop of a run: the settings the start-up reads, the first-run message and the
// configuration program, and the state written back at exit.
#include "core/desktop.h"
#include "core/sessao.h"

#include <functional>

namespace vexa {

// The settings part of the start-up, in its order: paths and names, the report box (returned:
// true when it is ticked), the port, the retention periods and the copy option, the day of
// the run, and the field flags. The numeric options read later in the start-up come from
// le_opcoes_numericas.
bool inicia_configuracoes(Sessao &s);
// The cheque-number obligation and the cheques per page of the printed lists.
void le_opcoes_numericas(Sessao &s);

// What the program offers instead when the configuration program isn't there: its own
// configuration screen. The start hands it in, so that the start knows no screen.
using AbreConfiguracao = std::function<void()>;

// The first-run message, about five seconds after the start.
void PrimeiraVez(Sessao &s, Desktop &d, const AbreConfiguracao &abreConfiguracao = {});
// Brings up the printer maker's configuration program; when it isn't there, OK on the message
// that says so opens abreConfiguracao. Result 1.
int ExecutaConfiguracao(Sessao &s, Desktop &d, const AbreConfiguracao &abreConfiguracao = {});
// The name of the configuration program, looked for in the data folder and beside the
// program.
inline constexpr const char *ProgramaConfiguracao = "VEXACFG.EXE";

// Writes the state of the report box to InRel ("1" ticked, "0" not).
void grava_in_rel(Sessao &s, bool marcado);

} // namespace vexa

#pragma once
// "Importar do Vexa antigo...": an office moves in from the old program with its folder:
// VEXA.MDB (banks and their layouts, transfer and copy layouts, payees, cities and the whole
// register), and beside it, when there, VEXA.INI and ChequeTransf.txt. Everything goes in or
// nothing does; the operator watches it table by table, may cancel, and gets a report, shown
// and kept as a text file in the data folder. The old files are only read.
#include "core/desktop.h"
#include "core/sessao.h"

#include <QString>

namespace vexa {

// The menu's command: the folder dialog, then importa_pasta.
void ImportaVexaAntigo(Sessao &s, Desktop &d);

// The import of the old program's folder, with its question about a store already in use,
// its progress window, its messages and its report. True when the data were imported.
bool importa_pasta(Sessao &s, Desktop &d, const QString &pasta);

} // namespace vexa

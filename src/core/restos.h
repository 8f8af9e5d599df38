#pragma once
// What a write cut short (a power cut, a killed process) leaves in the data folder, put right
// at the next start: the databases are opened so that SQLite rolls back or finishes what their
// journals hold, and the temporaries of whole-file writes and of a database made aside go.
#include "core/sessao.h"

namespace vexa {

// Run by the running copy at its start, holding the data folder, before anything reads it.
// A journal is never removed here: SQLite removes it once it has recovered its database, and
// a journal whose database can't be opened waits for the start that can.
void recupera_restos(Sessao &s);

} // namespace vexa

#pragma once
// The report's long walks over the rows of the list under a progress window.
#include "core/desktop.h"

namespace vexa {

// This row reached, and whether to go on (false once Cancelar was pressed). Without a
// progress the walk always goes on.
inline bool segue(Progresso *p, qint64 linha) {
    if (!p) return true;
    p->Valor(int(linha));
    return !p->Cancelado();
}

} // namespace vexa

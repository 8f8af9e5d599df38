#pragma once
// A screen's write to VEXA.INI. A file that refuses the write (a full disk, a file or folder
// the operator can't write to) keeps every byte it had, and the operator is told on the spot,
// since the setting would otherwise be lost at the next start without a word.
#include "core/desktop.h"
#include "core/sessao.h"

namespace vexa {

// "*%*" empties the key, as LeGravaIni. True when the file took the write.
bool GravaIni(Sessao &s, Desktop &d, const QString &Secao, const QString &Chave,
              const QString &Valor);

// The message of a refused write, for screens that gather several writes into one word.
void AvisaIniNaoGravado(Desktop &d);

} // namespace vexa

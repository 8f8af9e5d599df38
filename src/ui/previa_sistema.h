#pragma once
// The preview of a cheque on the system printer: its face at true size over the outline of the
// cheque, painted by the same code as the paper.
#include "printer/cheque_sistema.h"

namespace vexa::ui {

// A modal window with the face, "Imprimir" and "Cancelar": true when the operator printed.
bool previa_cheque_sistema(const PaginaSistema &face);

} // namespace vexa::ui

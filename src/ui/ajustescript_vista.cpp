// "Ajuste Gráfico do Layout de Cópia do Cheque": the plain sheet of 80 columns by 20 lines
// drawn as the cheque form of the bank adjust is, with the eleven boxes and their numbers.
#include <QMainWindow>

#include "core/tela.h"

namespace vexa::ui {

void CriaVistaAjusta(Tela &tela, QMainWindow &janela);

void CriaVistaAjusteScript(Tela &tela, QMainWindow &janela) {
    // The form's grid and the labels of each box come from the screen model.
    CriaVistaAjusta(tela, janela);
}

} // namespace vexa::ui

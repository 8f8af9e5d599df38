// "Ajuste Gráfico para Cheque Transferência": the same form and boxes as the cheque's graphic
// adjust; every box shows its own line and column.
#include <QMainWindow>

namespace vexa {
class Tela;
}

namespace vexa::ui {

void CriaVistaAjusta(Tela &tela, QMainWindow &janela);

void CriaVistaAjustaChequeTransferencia(Tela &tela, QMainWindow &janela) {
    CriaVistaAjusta(tela, janela);
}

} // namespace vexa::ui

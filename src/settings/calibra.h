#pragma once
// "Impressora do Sistema": cheques on a printer the system knows. Whether the cheques go there,
// which printer, how the cheque is fed (a cheque-size sheet in the manual feed, or an A4
// carrier with the cheque at an offset), and that printer's calibration: the page to lay over a
// real cheque, the two offsets and two scale corrections read off it, and a test cheque.
// The calibration is kept per printer name.
#include "core/tela.h"

namespace vexa {

namespace telas {
inline const QString Calibra = QStringLiteral("Calibra");
}

class Calibra : public Tela {
  public:
    Calibra(Sessao &sessao, Desktop &desktop);

    Caixa CheckUsar{"Imprimir os cheques na impressora do sistema"};
    Rotulo Label1{"Impressora:"};
    Combo cboImpressora;

    Quadro Frame1{"Folha"};
    Matriz<Opcao> OptFolha{"Folha do tamanho do cheque, na alimentação manual",
                           "Folha A4 de suporte, com o canto do cheque em (mm):"};
    Matriz<Rotulo> Label2{"Da esquerda:", "Do alto:"};
    Matriz<Texto> TxtFolha{{0, Texto()}, {1, Texto()}};

    Quadro Frame2{"Calibração desta impressora"};
    Matriz<Rotulo> Label3{"Deslocamento horizontal (mm):", "Deslocamento vertical (mm):",
                          "Escala horizontal (%):", "Escala vertical (%):"};
    Matriz<Texto> TxtAjuste{{0, Texto()}, {1, Texto()}, {2, Texto()}, {3, Texto()}};

    Matriz<Botao> Command1{"Imprimir &página de calibração", "Imprimir cheque de &teste", "&Salvar",
                           "Fecha&r"};

    void Form_Load() override;
    // A printer chosen: its own calibration comes to the fields.
    void cboImpressora_Click();
    void Command1_Click(int Index);

  private:
    // The fields checked and written to VEXA.INI; false after the message of the first bad one.
    bool grava();
    void mostra_calibracao();
    // The result of a print of this screen, told when it failed.
    void avisa(qint16 resultado, const QString &motivo);
};

} // namespace vexa

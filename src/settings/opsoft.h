#pragma once
// "Opções do Software": how long cheques and copy files are kept, how many cheques a printed
// list puts on a page, the inverted print of copies and whether a cheque needs its number.
// Each number has a field and a scroll bar beside it that move together.
#include "core/tela.h"

namespace vexa {

// The range of the three numbers, in days or cheques.
constexpr int OpcaoMinima = 1;
constexpr int OpcaoMaxima = 3650;

class OpSoft : public Tela {
  public:
    OpSoft(Sessao &sessao, Desktop &desktop);

    // The texts around the fields: three around the retention of cheques, two around that of
    // copy files, three around the cheques per page.
    Matriz<Rotulo> Label1{"Excluir cheques com mais de",
                          "dia(s), a partir",
                          "da data de apresentação.",
                          "Excluir arquivos de cópia com mais de",
                          "dia(s).",
                          "Enviar",
                          "cheques por página no relatório.",
                          "(para a impressora padrão do sistema)"};
    Matriz<Texto> Text01{{0, Texto()}, {1, Texto()}, {2, Texto()}};
    Matriz<Rolagem> VScroll01{{0, Rolagem(OpcaoMinima, OpcaoMaxima)},
                              {1, Rolagem(OpcaoMinima, OpcaoMaxima)},
                              {2, Rolagem(OpcaoMinima, OpcaoMaxima)}};
    Caixa CheckImpInv{"&Usar impressão invertida para cópias"};
    Caixa CheckUsarNum{"&Solicitar número de cheque para impressão."};
    Matriz<Botao> BtnCmd{"C&onfirmar", "&Cancelar"};

    void Form_Load() override;
    void Text01_Change(int Index);
    void Text01_LostFocus(int Index);
    void Text01_GotFocus(int Index);
    void Text01_KeyDown(int Index, int &KeyCode);
    void VScroll01_Change(int Index);
    void BtnCmd_Click(int Index);

  private:
    // The value of Sessao that each field shows and sets.
    qint16 &valor_sessao(int Index);
};

} // namespace vexa

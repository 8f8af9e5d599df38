#pragma once
// "Impressão de Cheques a Prazo": one total turned into up to twelve post-dated cheques. The
// screen spreads the amount over the instalments, works out each due date from a start date
// and the days of each instalment, prints the cheques one after the other and registers each.
//
// The schedule stands in rows: row k (0 to 11) holds the days Text1(k+1), the due date
// Text1(k+13), the amount Text2(k) and the cheque's number Text4(k).
#include "core/tela.h"
#include "store/registro_cheques.h"

namespace vexa {

class ChePrz : public Tela {
  public:
    ChePrz(Sessao &sessao, Desktop &desktop);

    // 0 the total; 1-12 the days of each instalment; 13-24 the due dates, "dd/mm/aa".
    Matriz<Texto> Text1;
    Texto DataPre{"Data Inicial", 8};
    Texto prazo{"Qtde Dias", 3};
    Texto parcelas{"Qtde Parcelas", 2};
    Quadro Frame1{"Programação dia Fixo"};
    Texto Text5{"DIA", 2};
    Matriz<Texto> Text2; // the amounts
    Matriz<Texto> Text4; // the cheques' numbers
    // 0 the bank's code, 1 the city, 2 the payee.
    Matriz<Texto> Text3{
        {0, Texto("Banco", 3)}, {1, Texto("Cidade", 15)}, {2, Texto("Favorecido", 74)}};
    Rotulo Label2; // the bank's name
    // The headings of the schedule's columns.
    Matriz<Rotulo> Label1{"Prazos", "Valor", "Nº do Cheque"};
    Painel Panel3D1{"F3 - Pesquisa  |  F8 - Limpa Campo  |  F4 - Grava Linha"};
    Matriz<Botao> Command3D1{"&Imprimir", "&Fechar", "&Limpar"};

    void Form_Load() override;
    // Back in front after the search window: the field with the focus takes the pick.
    void Form_Activate() override;

    // --- the screen's procedures
    void LimpaTela();
    // The number of instalments: the filled days among Text1(1) to Text1(12), wherever they
    // stand.
    int ContaParcelas() const;
    // Spreads the total over the instalments and works out their dates, unless the amounts
    // already add up to the total.
    void CalculaParcelas();
    // The check before printing: 1 when refused (after its message), 0 when it may print.
    int VerificaCampos();
    // One cheque for each instalment, each after "Insira o Documento.".
    void ImprimeParcelas();
    // The row of Log of a printed instalment (0 to 11). -2 when the register couldn't be
    // opened, otherwise the closing of the tables' 0.
    int RegistraParcela(int Parcela);
    // The cheque of an instalment (0 to 11) as its row of Log takes it.
    ChequeImpresso parcela(int i) const;

    // --- handlers
    void Text1_Change(int Index);
    void Text1_Enter(int Index);
    void Text1_GotFocus(int Index);
    void Text1_LostFocus(int Index);
    void Text1_KeyDown(int Index, int &KeyCode, int Shift);
    void Text2_Change(int Index);
    void Text2_LostFocus(int Index);
    void Text2_KeyDown(int Index, int &KeyCode, int Shift);
    void Text3_Change(int Index);
    void Text3_GotFocus(int Index);
    void Text3_LostFocus(int Index);
    void Text3_KeyDown(int Index, int &KeyCode, int Shift);
    void Text4_Change(int Index);
    void Text4_KeyDown(int Index, int &KeyCode, int Shift);
    void DataPre_KeyDown(int &KeyCode, int Shift);
    void prazo_KeyDown(int &KeyCode, int Shift);
    void parcelas_KeyDown(int &KeyCode, int Shift);
    void Text5_KeyDown(int &KeyCode, int Shift);
    void Command3D1_Click(int Index);

  private:
    void aviso(const QString &texto, Icone icone = Icone::Exclamacao);
    void enter_total();
    // Enter in a field of days (1 to 12), also the one parcelas sends the focus to.
    void enter_periodo(int Index);
    void enter_vencimento(int Index);
    void preenche_periodos();
    void aplica_dia_fixo();
    // The amount of a field shown through the mask; refused when it isn't one or would outgrow
    // the field (after the size message): emptied, and false.
    bool mostra_valor(Texto &campo, const QString &mascara);
    // The number of instalments typed in parcelas, or 0 when there is none.
    int limite_parcelas() const;
    bool passou_limite(int posicao, const QString &fim);
    // F8 empties the field; true when the key was it.
    bool limpa_campo(Texto &campo, int KeyCode);
    void grava_periodos();
    // The instalments without a number take the bank's book in turn, from its next number.
    void numera_parcelas();

    // Set when the focus is on its way to another field of days: leaving an empty one then
    // goes on to the dates instead.
    bool rumoPeriodo_ = false;
    // Set while the focus goes to Limpar or Fechar: the field being left isn't checked, since
    // its text is about to be emptied or closed with the screen.
    bool semConferir_ = false;
};

} // namespace vexa

#include "registers/ajustatransf.h"

#include "core/conversoes.h"
#include "registers/banctrans.h"
#include "registers/regras.h"

namespace vexa {

namespace {
enum { Cidade = 3, Data = 4, Agencia = 5, Conta = 6 };
}

AjustaChequeTransferencia::AjustaChequeTransferencia(Sessao &sessao, Desktop &desktop)
    : AjusteGrafico(telas::AjustaChequeTransferencia, "Ajuste Gráfico para Cheque Transferência",
                    sessao, desktop,
                    {{"Valor Numérico:", "    #9.999,99#", 1335, 1, 4},
                     {"Valor Extenso1:", "Nove Mil, Novecentos e Noventa e Nove Reais", 4335, 4, 8},
                     {"Valor Extenso2:", "e Noventa e Nove CentavosXXXXXXXXXXXXXXX", 4335, 6, 11},
                     {"Cidade...........:", "Curitiba", 1010, 11, 18},
                     {"Data......:", "09/06/2000", 1095, 0, 0},
                     {"Agência.:", "Agencia", 1010, 11, 18},
                     {"Nº Conta.:", "Nº Conta", 1010, 0, 0}},
                    14) {
    liga("Command3D1", Evento::Click, [this](int i) { Command3D1_Click(i); });
}

BancTrans *AjustaChequeTransferencia::banctrans() const {
    return dynamic_cast<BancTrans *>(desktop.Aberta(telas::BancTrans));
}

void AjustaChequeTransferencia::Form_Load() {
    if (const BancTrans *b = banctrans())
        Panel3D3.Caption = b->Text1[0].Text + " - " + b->Text1[1].Text;
    for (int i = 0; i <= 6; ++i)
        posiciona_absoluto(i, Val(sessao.AjusteC[i + 1]), Val(sessao.AjusteL[i + 1]));
    // The cheque prints the date on the city's line and the account on the branch's: the
    // boxes show them there from the start.
    acompanha();
    AtualizaRotulos();
}

void AjustaChequeTransferencia::acompanha() {
    Text1[Data].Top = Text1[Cidade].Top;
    Text1[Conta].Top = Text1[Agencia].Top;
}

void AjustaChequeTransferencia::AtualizaRotulos() {
    for (int i = 0; i <= 6; ++i) {
        Label2[i].Caption = rotulo(linha_de(Text1[i].Top) + 1);
        Label2[7 + i].Caption = rotulo(coluna_de(Text1[i].Left) + 1);
    }
}

void AjustaChequeTransferencia::Command3D1_Click(int Index) {
    if (Index == 1) return Unload();
    BancTrans *b = banctrans();
    if (!b) return Unload();
    for (int i = 0; i <= 13; ++i)
        b->Text1[i + 2].Text = Label2[i].Caption;
    if (codigo_sem_regras(b->Text1[0].Text)) return Unload();
    QList<int> linhas, colunas;
    for (int i = 0; i <= 6; ++i) {
        linhas.append(int(Val(Label2[i].Caption)));
        colunas.append(int(Val(Label2[7 + i].Caption)));
    }
    if (!verifica_ordem_transf(Topos(), Esquerdas(), linhas, colunas))
        return mostra_aviso(desktop, AvisoTransf);
    Unload();
}

} // namespace vexa

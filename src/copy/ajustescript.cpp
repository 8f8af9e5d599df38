#include "copy/ajustescript.h"

#include "copy/script.h"
#include "core/conversoes.h"

namespace vexa {

namespace {
// Line and column labels of each box: amount, words 1 and 2, payee, city, day, month,
// year, bank, comment, cheque number.
constexpr int rotulos[11][2] = {{0, 5},  {1, 6},  {2, 7},   {3, 8},   {4, 9},  {4, 10},
                                {4, 11}, {4, 12}, {15, 16}, {17, 18}, {13, 14}};

// Where each layout field comes from and goes to: box, line field (AjusteL), column field
// (AjusteC), and the Text1 of Script that takes the line and the column back.
struct Ligacao {
    int Caixa, L, C, TextoLinha, TextoColuna;
};
constexpr Ligacao ligacoes[11] = {
    {0, 1, 1, 2, 10}, {1, 2, 2, 3, 11},  {2, 3, 3, 4, 12},   {3, 4, 4, 7, 15},
    {4, 5, 5, 8, 16}, {5, 5, 6, -1, 18}, {6, 5, 7, -1, 19},  {7, 5, 8, -1, 20},
    {8, 6, 9, 5, 13}, {9, 8, 11, 9, 17}, {10, 7, 10, 6, 14},
};
} // namespace

QList<AjusteGrafico::Amostra> AjusteScript::amostras() {
    const auto amostra = [](const char *legenda, const char *texto, int minimo, int maximo) {
        const QString t = QString::fromUtf8(texto);
        // The widths of the sample boxes follow their texts.
        const int largura = int(t.size()) * UnidadeColuna + 67;
        return Amostra{QString::fromUtf8(legenda), t, largura, minimo, maximo};
    };
    return {
        amostra("Valor:", "    #9.999,99#", 1, 4),
        amostra("Extenso1:", "Nove Mil, Novecentos e Noventa e Nove Reais", 4, 8),
        amostra("Extenso2:", "e Noventa e Nove CentavosXXXXXXXXXXXXXXX", 6, 11),
        amostra("Favorecido:", "José Antônio da Silva", 8, 14),
        amostra("Cidade:", "Curitiba", 10, 16),
        amostra("Dia:", "16", 0, 0),
        amostra("Mes:", "Agosto", 0, 0),
        amostra("Ano:", "2000", 0, 0),
        amostra("Banco:", "099 - BANCO PIRACICABA DE  BOIOTÁ", 0, 0),
        amostra("Comentário:", "      COMENTARIO1 - DETALHES - INFORMAÇÕES SOBRE O CHEQUE", 0, 0),
        amostra("Nº Cheque:", "CH.No. 012345 ", 0, 0)};
}

AjusteScript::AjusteScript(Sessao &sessao, Desktop &desktop)
    : AjusteGrafico(telas::AjusteScript, "Ajuste Gráfico do Layout de Cópia do Cheque", sessao,
                    desktop, amostras(), 19) {
    Colunas = 80;
    Linhas = 20;
    // The arrows test a quotient a hair short of the box's column and line: a box starts at
    // column 80 and line 20 at the most.
    UltimaColuna = 78;
    UltimaLinha = 18;
    Estreita = false;
    Label3.Caption = "80 X 20";
    liga("Command3D1", Evento::Click, [this](int i) { Command3D1_Click(i); });
}

int AjusteScript::rotulo_linha(int Indice) const {
    return rotulos[Indice][0];
}

int AjusteScript::rotulo_coluna(int Indice) const {
    return rotulos[Indice][1];
}

Script *AjusteScript::script() const {
    return dynamic_cast<Script *>(desktop.Aberta(telas::Script));
}

void AjusteScript::Form_Load() {
    if (const Script *s = script()) Panel3D3.Caption = s->Text1[0].Text + " - " + s->Text1[1].Text;
    for (const Ligacao &l : ligacoes)
        posiciona_absoluto(l.Caixa, Val(sessao.AjusteC[l.C]), Val(sessao.AjusteL[l.L]));
    AtualizaRotulos();
}

void AjusteScript::acompanha() {
    for (int i = 5; i <= 7; ++i)
        Text1[i].Top = Text1[4].Top;
}

void AjusteScript::AtualizaRotulos() {
    for (int i = 0; i < Text1.size(); ++i) {
        Label2[rotulo_linha(i)].Caption =
            rotulo(linha_de(Text1[rotulo_linha(i) == 4 ? 4 : i].Top) + 1);
        Label2[rotulo_coluna(i)].Caption = rotulo(coluna_de(Text1[i].Left) + 1);
    }
}

int AjusteScript::caixa_do_campo(CampoCopia campo) {
    switch (campo) {
    case CampoCopia::Valor:
        return 0;
    case CampoCopia::Favorecido:
        return 3;
    case CampoCopia::Cidade:
        return 4;
    case CampoCopia::Dia:
        return 5;
    case CampoCopia::Mes:
        return 6;
    case CampoCopia::Ano:
        return 7;
    case CampoCopia::Banco:
        return 8;
    case CampoCopia::NumeroCheque:
        return 10;
    }
    return 0;
}

int AjusteScript::VerificaPosicaoCopia() {
    QList<PosicaoCopia> posicoes;
    for (CampoCopia c :
         {CampoCopia::Valor, CampoCopia::Favorecido, CampoCopia::Cidade, CampoCopia::Dia,
          CampoCopia::Mes, CampoCopia::Ano, CampoCopia::Banco, CampoCopia::NumeroCheque}) {
        const int caixa = caixa_do_campo(c);
        posicoes.append({int(Val(Label2[rotulo_linha(caixa)].Caption)),
                         int(Val(Label2[rotulo_coluna(caixa)].Caption))});
    }
    const auto falha = vexa::VerificaPosicaoCopia(posicoes);
    if (!falha) return 1;
    desktop.MsgBox(falha->Texto, Botoes::OK, TituloLayoutCopia, Icone::Exclamacao);
    SetFocus(Text1[caixa_do_campo(falha->Culpado)]);
    return 0;
}

void AjusteScript::Command3D1_Click(int Index) {
    if (Index == 1) return Unload();
    if (!VerificaPosicaoCopia()) return;
    if (Script *s = script()) {
        for (const Ligacao &l : ligacoes) {
            if (l.TextoLinha >= 0)
                s->Text1[l.TextoLinha].Text = Label2[rotulo_linha(l.Caixa)].Caption;
            s->Text1[l.TextoColuna].Text = Label2[rotulo_coluna(l.Caixa)].Caption;
        }
    }
    Unload();
}

} // namespace vexa

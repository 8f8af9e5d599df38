#include "registers/ajusta.h"

#include "core/conversoes.h"
#include "core/teclas.h"
#include "registers/bancos.h"
#include "registers/regras.h"

namespace vexa {

// --- AjusteGrafico

AjusteGrafico::AjusteGrafico(QString nome, QString caption, Sessao &sessao, Desktop &desktop,
                             const QList<Amostra> &amostras, int rotulos)
    : Tela(std::move(nome), std::move(caption), sessao, desktop), amostras_(amostras) {
    for (int i = 0; i < amostras_.size(); ++i) {
        Forma caixa(amostras_[i].Texto);
        caixa.Width = amostras_[i].Largura;
        caixa.Height = UnidadeLinha;
        Text1.mapa().emplace(i, caixa);
        Label1.mapa().emplace(i, Rotulo(amostras_[i].Legenda));
    }
    for (int i = 0; i < rotulos; ++i)
        Label2.mapa().emplace(i, Rotulo("000"));
    registra("Text1", Text1);
    registra("Command3D1", Command3D1);
    registra("Label1", Label1);
    registra("Label2", Label2);
    registra("Label3", Label3);
    registra("Panel3D3", Panel3D3);
    registra("Panel3D5", Panel3D5);
    ligaTecla("Text1", Evento::KeyDown, [this](int i, int &k, int s) { Text1_KeyDown(i, k, s); });
    liga("Text1", Evento::GotFocus, [this](int i) { Text1_GotFocus(i); });
    liga("Text1", Evento::LostFocus, [this](int i) { Text1_LostFocus(i); });
}

QString AjusteGrafico::rotulo(double valor) {
    return Format(QString::number(valor, 'f', 6), "000");
}

void AjusteGrafico::posiciona_absoluto(int Indice, double Coluna, double Linha) {
    Text1[Indice].Left = x_da_coluna(Coluna);
    Text1[Indice].Top = t_da_linha(Linha);
}

QList<int> AjusteGrafico::Topos() const {
    QList<int> t;
    for (const auto &[i, caixa] : Text1)
        t.append(caixa.Top);
    return t;
}

QList<int> AjusteGrafico::Esquerdas() const {
    QList<int> x;
    for (const auto &[i, caixa] : Text1)
        x.append(caixa.Left);
    return x;
}

void AjusteGrafico::Text1_KeyDown(int Index, int &KeyCode, int) {
    if (KeyCode < tecla::Esquerda || KeyCode > tecla::Abaixo) return;
    Forma &caixa = Text1[Index];
    const Amostra &a = amostras_[Index];
    const double x = coluna_de(caixa.Left), y = linha_de(caixa.Top);
    // The words and the payee narrow near the right edge of the form, by 70 a step while the
    // box moves by 68, and the limits differ by direction: going back never quite restores
    // the width.
    const bool largo = Index == 1 || Index == 2;
    bool termina = false;
    switch (KeyCode) {
    case tecla::Esquerda:
        if (x > 0) {
            caixa.Left -= UnidadeColuna;
            const double nx = coluna_de(caixa.Left);
            if (Estreita &&
                ((Index == 3 && nx < 119 && nx > 110) || (largo && nx < 119 && nx > 75)))
                caixa.Width += 70;
        }
        break;
    case tecla::Direita:
        if (x < UltimaColuna) {
            caixa.Left += UnidadeColuna;
            const double nx = coluna_de(caixa.Left);
            if (Estreita && ((Index == 3 && nx > 110) || (largo && nx > 74))) caixa.Width -= 70;
        }
        break;
    case tecla::Acima:
        if (fixa_na_vertical(Index)) break;
        if (a.Minimo > 0 && y + 1 < a.Minimo)
            termina = true;
        else if (y > 0)
            caixa.Top -= UnidadeLinha;
        break;
    case tecla::Abaixo:
        if (fixa_na_vertical(Index)) break;
        if (a.Maximo > 0 && y + 1 > a.Maximo)
            termina = true;
        else if (y < UltimaLinha)
            caixa.Top += UnidadeLinha;
        break;
    }
    if (!termina) acompanha();
    AtualizaRotulos();
    // The arrow moved a box; it must not move the focus as well.
    KeyCode = 0;
}

void AjusteGrafico::destaca(int Indice, qint32 cor) {
    Label2[rotulo_linha(Indice)].BackColor = cor;
    Label2[rotulo_coluna(Indice)].BackColor = cor;
}

void AjusteGrafico::Text1_GotFocus(int Index) {
    destaca(Index, CorDestaque);
}

void AjusteGrafico::Text1_LostFocus(int Index) {
    destaca(Index, SemCor);
}

// --- Ajusta

Ajusta::Ajusta(Sessao &sessao, Desktop &desktop)
    : AjusteGrafico(telas::Ajusta, "Ajuste Gráfico / Cheque", sessao, desktop,
                    {{"Valor Numérico:", "    #9.999,99#", 1335, 1, 4},
                     {"Valor Extenso1:", "Nove Mil, Novecentos e Noventa e Nove Reais", 4335, 4, 8},
                     {"Valor Extenso2:", "e Noventa e Nove CentavosXXXXXXXXXXXXXXX", 4335, 6, 11},
                     {"Favorecido......:", "José Antônio da Silva", 1935, 8, 14},
                     {"Cidade....:", "Curitiba", 1335, 10, 16},
                     {"Dia.........:", "16", 375, 0, 0},
                     {"Mes..:", "Junho", 975, 0, 0},
                     {"Ano..:", "99", 375, 0, 0}},
                    13) {
    liga("Command3D1", Evento::Click, [this](int i) { Command3D1_Click(i); });
}

Bancos *Ajusta::bancos() const {
    return dynamic_cast<Bancos *>(desktop.Aberta(telas::Bancos));
}

void Ajusta::Form_Load() {
    if (const Bancos *b = bancos()) Panel3D3.Caption = b->Text1[0].Text + " - " + b->Text1[1].Text;
    for (int i = 0; i <= 4; ++i)
        PosicionaCampo(i, Val(sessao.AjusteC[i + 1]), Val(sessao.AjusteL[i + 1]));
    for (int i = 5; i <= 7; ++i)
        PosicionaCampo(i, Val(sessao.AjusteC[i + 1]), Val(sessao.AjusteL[5]));
    AtualizaRotulos();
}

void Ajusta::PosicionaCampo(int Indice, double Coluna, double Linha) {
    if (Indice <= 4) return posiciona_absoluto(Indice, Coluna, Linha);
    // Day, month and year stand at a distance from the city; the 69 is 188 less 119.
    Text1[Indice].Top = Text1[4].Top;
    Text1[Indice].Left = int(Text1[4].Left + Coluna * UnidadeColuna - 69);
}

void Ajusta::acompanha() {
    for (int i = 5; i <= 7; ++i)
        Text1[i].Top = Text1[4].Top;
}

void Ajusta::AtualizaRotulos() {
    for (int i = 0; i <= 4; ++i) {
        Label2[i].Caption = rotulo(linha_de(Text1[i].Top) + 1);
        Label2[5 + i].Caption = rotulo(coluna_de(Text1[i].Left) + 1);
    }
    // The date parts show absolute columns; the + 2 makes up for the 69 of PosicionaCampo.
    for (int i = 5; i <= 7; ++i)
        Label2[5 + i].Caption = rotulo(coluna_de(Text1[i].Left) + 2);
}

void Ajusta::Command3D1_Click(int Index) {
    if (Index == 1) return Unload();
    Bancos *b = bancos();
    if (!b) return Unload();
    for (int i = 0; i <= 9; ++i)
        b->Text1[i + 2].Text = Label2[i].Caption;
    // The layout keeps the date parts as distances from the city's column.
    const double cidade = Val(Label2[9].Caption);
    for (int i = 0; i <= 2; ++i)
        b->Text1[12 + i].Text = rotulo(Val(Label2[10 + i].Caption) - cidade);
    if (codigo_sem_regras(b->Text1[0].Text)) return Unload();
    if (!verifica_ordem_ajuste(Topos(), Esquerdas())) return mostra_aviso(desktop, AvisoAjuste);
    Unload();
}

} // namespace vexa

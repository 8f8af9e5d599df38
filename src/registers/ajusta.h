#pragma once
// The graphic adjust of a layout: sample texts on a picture of the cheque form, moved with
// the arrow keys instead of typing lines and columns.
//
// The screen works in its own units: a column is 68 wide, a line 188 high, and the form
// begins 119 from the left and the top of its frame. The labels read a position back with an
// offset of 120, so that every quotient falls a hair short of a whole number and the mask
// "000" rounds it to the line or column; the arrow keys' limits are tested on those
// quotients, which is why a box on its lowest line stays and one on its highest moves once.
#include "core/tela.h"

namespace vexa {

class Bancos;

class AjusteGrafico : public Tela {
  public:
    static constexpr int UnidadeColuna = 68;
    static constexpr int UnidadeLinha = 188;
    static constexpr int Origem = 119;
    static constexpr int OrigemRotulo = 120;
    // The background of a label while its box has the focus.
    static constexpr qint32 CorDestaque = 0x80FFFF;

    Matriz<Forma> Text1;
    // The captions beside the boxes, and the numbers (line and column) of each.
    Matriz<Rotulo> Label1;
    Matriz<Rotulo> Label2;
    Rotulo Label3{"120 X 22"};
    Painel Panel3D3;
    Painel Panel3D5{" Setas = Movimenta Campo | Tab ou Click = Seleciona Campo"};
    Matriz<Botao> Command3D1{"&OK", "&Cancelar"};

    void Text1_KeyDown(int Index, int &KeyCode, int Shift);
    void Text1_GotFocus(int Index);
    void Text1_LostFocus(int Index);
    virtual void AtualizaRotulos() = 0;
    // The labels that show a box's line and column (the view lays them out by these).
    virtual int rotulo_linha(int Indice) const = 0;
    virtual int rotulo_coluna(int Indice) const = 0;

    // The tops and left edges of the boxes, in their order.
    QList<int> Topos() const;
    QList<int> Esquerdas() const;

    // A box's place for a layout's column and line, and back to the numbers of the labels.
    static int x_da_coluna(double Coluna) { return int((Coluna - 1) * UnidadeColuna + Origem); }
    static int t_da_linha(double Linha) { return int((Linha - 1) * UnidadeLinha + Origem); }
    static double coluna_de(int X) { return double(X - OrigemRotulo) / UnidadeColuna; }
    static double linha_de(int T) { return double(T - OrigemRotulo) / UnidadeLinha; }
    // A number as the labels show it: rounded, three digits.
    static QString rotulo(double valor);

    // The form's grid, and how far right and down a box may start (x and y counted from 0).
    int Colunas = 120, Linhas = 22;
    int UltimaColuna = 118, UltimaLinha = 20;
    // Whether the wide boxes narrow near the right edge of the form.
    bool Estreita = true;

  protected:
    struct Amostra {
        QString Legenda;
        QString Texto;
        int Largura;
        int Minimo; // lowest line the up arrow leaves, 0 for none
        int Maximo; // the down arrow stops past this line, 0 for none
    };
    AjusteGrafico(QString nome, QString caption, Sessao &sessao, Desktop &desktop,
                  const QList<Amostra> &amostras, int rotulos);

    void posiciona_absoluto(int Indice, double Coluna, double Linha);
    // Boxes that the up and down arrows leave where they are.
    virtual bool fixa_na_vertical(int Indice) const = 0;
    // After a key: boxes that keep to another box's line follow it.
    virtual void acompanha() = 0;

  private:
    void destaca(int Indice, qint32 cor);
    QList<Amostra> amostras_;
};

// "Ajuste Gráfico / Cheque": the layout on the bank screen, handed over in Sessao's AjusteL
// and AjusteC; OK copies it back into the bank screen's fields.
class Ajusta : public AjusteGrafico {
  public:
    Ajusta(Sessao &sessao, Desktop &desktop);

    void Form_Load() override;
    void PosicionaCampo(int Indice, double Coluna, double Linha);
    void AtualizaRotulos() override;
    void Command3D1_Click(int Index);

    int rotulo_linha(int Indice) const override { return qMin(Indice, 4); }
    int rotulo_coluna(int Indice) const override { return 5 + Indice; }

  protected:
    bool fixa_na_vertical(int Indice) const override { return Indice >= 5; }
    void acompanha() override;

  private:
    Bancos *bancos() const;
};

} // namespace vexa

#pragma once
// "Ajuste Gráfico do Layout de Cópia do Cheque": the copy layout's items as sample boxes on
// a plain sheet of 80 columns by 20 lines. Every box holds an absolute column; the date parts
// keep to the city's line. OK checks the layout first and hands it back only when it passes.
#include "registers/ajusta.h"
#include "registers/regras.h"

namespace vexa {

class Script;

class AjusteScript : public AjusteGrafico {
  public:
    AjusteScript(Sessao &sessao, Desktop &desktop);

    void Form_Load() override;
    void AtualizaRotulos() override;
    void Command3D1_Click(int Index);
    // The layout's rules on the labels: 1 when they hold; 0 after the message, with the
    // focus on the box to correct.
    int VerificaPosicaoCopia();

    int rotulo_linha(int Indice) const override;
    int rotulo_coluna(int Indice) const override;

    // The box of a checked field.
    static int caixa_do_campo(CampoCopia campo);

  protected:
    bool fixa_na_vertical(int Indice) const override { return Indice >= 5 && Indice <= 7; }
    void acompanha() override;

  private:
    // The eleven boxes with their captions, sample texts and the lines the arrows keep to.
    static QList<Amostra> amostras();
    Script *script() const;
};

} // namespace vexa

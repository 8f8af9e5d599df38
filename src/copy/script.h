#pragma once
// "Cadastro de Script": the copy layouts, where each item of a cheque stands on a plain sheet
// when a copy of it is printed as lines of text.
#include "registers/cadastro.h"

namespace vexa {

// The fields of table Script by the index of Text1: the line field of an item is not
// followed by its column field, and the date has no line of its own (it keeps the city's).
const QStringList &CamposScript();

class Script : public Cadastro {
  public:
    Script(Sessao &sessao, Desktop &desktop);

    Botao Command3D2{"Ajuste &Gráfico"};

    void Form_Load() override;
    void Form_Unload() override;

    void Atualiza_List();
    void CarregaScript(const QString &Codigo);
    // The layout handed to the graphic adjust: l1..l8 in AjusteL(1..8), c1..c11 in
    // AjusteC(1..11), as they stand.
    void PreparaAjuste();

    void Command3D1_Click(int Index) override;
    void Text1_LostFocus(int Index) override;
    void Text1_KeyDown(int Index, int &KeyCode, int Shift) override;
    void Command3D2_Click();

    bool Incluindo() const { return incluindo_; }

  protected:
    void grava(int Index) override;
    QString mascara(int) const override { return {}; }
    void carrega_linha(const QString &linha) override { CarregaScript(linha.left(3)); }
    // The layouts have no printed list: no button asks for one.
    PedidoLista pedido_lista() const override { return {QString(), 0, QString()}; }

  private:
    // Opens the table's record set on one code, or on all rows for an empty one; true when a
    // row is there.
    bool localiza(const QString &Codigo);
    void grava_campos();
    void habilita_comandos(bool sim);

    bool incluindo_ = false;
    // The focus is going to another field of Text1.
    bool paraCampo_ = false;
};

} // namespace vexa

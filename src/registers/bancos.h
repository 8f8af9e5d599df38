#pragma once
// "Cadastro de Bancos": the cheque layout of each bank, kept in three places that must agree:
// the table Bancos, the printer's memory and the section Formato of VEXA.INI.
#include "registers/cadastro.h"

namespace vexa {

class Bancos : public Cadastro {
  public:
    Bancos(Sessao &sessao, Desktop &desktop);

    Botao Command3D2{"Ajuste &Gráfico"};
    Botao SSCommand1{"Imprimir &Lista"};
    // The number of the bank's next cheque, typed from the cheque book; the entry screen
    // proposes it and moves it on at each print.
    Texto ProximoCheque{"Próximo Cheque:", 12};

    int TemCampoVazio() const;
    int VerificaCodigo(int Modo) { return verifica_campos(Modo); }
    void CarregaBanco(const QString &Codigo);
    void NovoRegistroBanco();
    void AlteraRegistroBanco();
    void ExcluiRegistroBanco();
    void AtualizaIni(int Modo);
    void PreparaAjuste();

    void Command3D2_Click();
    void Command3D1_Click(int Index) override;

    // The thirteen positions L1..L5, C1..C8 as they stand on the screen.
    QStringList Posicoes() const;
    // The line of section Formato for the layout on the screen.
    QString linha_formato() const;

  protected:
    bool pergunta_impressora(int Index) override;
    void grava(int Index) override;
    QString mascara(int Index) const override { return Index == 1 ? QString() : "000"; }
    void carrega_linha(const QString &linha) override { CarregaBanco(linha.left(3)); }
    PedidoLista pedido_lista() const override;

  private:
    void grava_campos();
};

} // namespace vexa

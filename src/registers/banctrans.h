#pragma once
// "Cadastro de Bancos para Cheque Transferência": the layout of the transfer cheque of each
// bank. The layout in force is the bank's line in section ChequeTransf of VEXA.INI, which the
// transfer cheque reads by position; the list ChequeTransf.txt and the table Transferencia
// follow it, so that the list, the search and the printed list show what is registered.
#include "registers/cadastro.h"
#include "store/bancos_padrao.h"

#include <QList>
#include <optional>

namespace vexa {

// A transfer layout as it stands in section ChequeTransf.
struct LayoutTransf {
    QStringList Posicoes; // L1..L7, C1..C7, three digits each
    QString Nome;
};

// The line read back by position; empty when the bank has none (a missing key, or one that an
// exclusion left without a value).
std::optional<LayoutTransf> le_layout_transf(const Sessao &s, const QString &Codigo);
// The list file's path in the data folder.
QString arquivo_lista_transf(const Sessao &s);

class BancTrans : public Cadastro {
  public:
    BancTrans(Sessao &sessao, Desktop &desktop);

    Botao Command3D2{"Ajuste &Gráfico"};
    Botao SSCommand1{"Imprimir &Lista"};

    void Form_Load() override;
    void Form_Unload() override;

    QString GeraListaCheqTransf();
    int VerificaCamposVazios();
    int VerificaBancoTransf(int Modo);
    int ExisteBancoTransf(const QString &Codigo);
    void CarregaBancoTransf(const QString &Codigo);
    // Writes the section's line; false after its message when the file could not be written.
    bool AtualizaIniTransf(int Modo);
    // False when the line did not reach the disk.
    bool AcrescentaListaTransf();
    void PreparaAjusteTransf();

    void Command3D2_Click();

    // L1..L7, C1..C7 as they stand on the screen.
    QStringList Posicoes() const;

  protected:
    // The checks depend on the command (Excluir seeks the bank, the others test the fields):
    // grava runs them.
    int verifica(int) override { return 0; }
    void grava(int Index) override;
    QString mascara(int Index) const override { return Index == 1 ? QString() : "000"; }
    void carrega_linha(const QString &linha) override { CarregaBancoTransf(linha.left(3)); }
    PedidoLista pedido_lista() const override;
    void procura(const QString &Filtro) override;

  private:
    void inclui();
    void altera();
    void exclui();
    // The list follows the section: a line whose bank has no layout goes, a bank listed twice
    // (renamed before Alterar rewrote its line) keeps its first line, each line takes the
    // section's name, and a layout the file misses is added at its end. The file is rewritten
    // only when that changes it. Gives its lines.
    QStringList acerta_arquivo();
    // The table takes the section's layouts of the listed banks and loses the rows of banks
    // with no layout.
    void acerta_tabela(const QStringList &linhas);
    // The bank's row takes the fields (Codigo, Nome, L1..L7, C1..C7), written only when they
    // differ. False when the database refused the write.
    bool grava_tabela(const QStringList &campos);
    bool apaga_tabela(const QString &Codigo);
    // The row of the bank on the screen; a refused write is told.
    void grava_tabela_da_tela();
    // The list file's lines, and the file rewritten with another set of lines.
    QStringList linhas_arquivo() const;
    bool regrava_arquivo(const QStringList &linhas);
    void avisa_lista_nao_gravada(const QString &titulo);

    // The table opened at the screen's opening; without it the commands leave it alone.
    bool tabela_ = false;
};

} // namespace vexa

#pragma once
// What the register screens share: the fields Text1 with their code first, the search field
// Text2, the list whose lines begin with the code, the four buttons and their two states, and
// the print button that opens the list dialog.
#include "core/tela.h"

#include <memory>

namespace vexa {

class RecordSet;

// Fills a list with the rows of a table's shared record set, first to last: code, " - ",
// name. The register screens and the search window show their rows this way.
void preenche_lista(Sessao &s, int Tabela, Lista &lista);

// "O Banco de dados "<path>" nao foi encontrado!": a register opened without its database.
void avisa_base_ausente(Sessao &s, Desktop &d);
// A register's write that the database refused (read-only, locked, full or damaged): the record
// on the screen was not stored (excluido: not deleted).
void avisa_registro_nao_gravado(Desktop &d, bool excluido = false);

// The print buttons of the registers: the dialog of the lists over that register, or a
// message when it has no rows. tabelaLista "Bancos", "Favorecido" or "Cidade"; tabelaBancos
// 1 the cheque layouts, 2 the transfer layouts; palavra closes the total on the panel.
struct PedidoLista {
    PedidoLista(QString tabelaLista, qint16 tabelaBancos, QString palavra,
                QString mensagemVazio = "Não Existe Lançamentos a Serem Impressos",
                QString tituloVazio = QString())
        : TabelaLista(std::move(tabelaLista)), TabelaBancos(tabelaBancos),
          Palavra(std::move(palavra)), MensagemVazio(std::move(mensagemVazio)),
          TituloVazio(std::move(tituloVazio)) {}
    QString TabelaLista;
    qint16 TabelaBancos;
    QString Palavra;
    QString MensagemVazio;
    QString TituloVazio;
};
void abre_lista(Sessao &s, Desktop &d, const PedidoLista &pedido);

class Cadastro : public Tela {
  public:
    Matriz<Texto> Text1;
    Texto Text2;
    Lista List1;
    Matriz<Botao> Command3D1{"&Incluir", "&Alterar", "&Excluir", "Fecha&r"};

    void Form_Load() override;
    void Form_Unload() override;

    void HabilitaBotoes(bool Incluir, bool Alterar, bool Excluir, bool Fechar);
    void LimpaCampos();
    void PreencheLista(int Tabela);
    bool TemSelecao() const { return List1.ListIndex >= 0; }

    virtual void Command3D1_Click(int Index);
    void Text1_GotFocus(int Index);
    virtual void Text1_LostFocus(int Index);
    virtual void Text1_KeyDown(int Index, int &KeyCode, int Shift);
    void Text2_Change();
    void Text2_GotFocus();

    // The table of this register, by the store's numbers.
    const int Tabela;

  protected:
    Cadastro(QString nome, QString caption, Sessao &sessao, Desktop &desktop, int tabela,
             Matriz<Texto> campos, QString procura);

    // The shared record set of this register's table.
    RecordSet &conjunto();
    // 1 on failure: an empty field (message, focus on it), or the code found at an inclusion
    // (Modo 1) or missing at a change or deletion (Modo 0). Leaves the table's record set on
    // the typed code.
    int verifica_campos(int Modo);

    // The steps of a command between the printer questions and the store: each register has
    // its own. pergunta_impressora runs first of all; false stops the command.
    virtual bool pergunta_impressora(int Index) { return Index >= 0; }
    virtual int verifica(int Modo) { return verifica_campos(Modo); }
    virtual void grava(int Index) = 0;
    // The mask a field takes when it leaves with text; empty for none.
    virtual QString mascara(int Index) const = 0;
    // After a line of the list is chosen, with the buttons already in the loaded state.
    virtual void carrega_linha(const QString &linha) = 0;
    // What the print button lists.
    virtual PedidoLista pedido_lista() const = 0;
    // The search field changed: the list narrows to the records that begin with Filtro.
    virtual void procura(const QString &Filtro);

    void registra_cadastro(const QString &nomeImprime, Botao &imprime);
    // Ahead of a graphic adjust: the positions from Text1(primeiro) on, as many as padrao
    // holds, take three digits; a missing one stands in at twice its index, so that no two
    // boxes overlap; a layout with none at all takes padrao. The first `linhas` go to
    // AjusteL(1..), the rest to AjusteC(1..).
    void prepara_posicoes(int primeiro, const QStringList &padrao, int linhas);
    // The shared controls and handlers, for a register without a print button.
    void registra_cadastro();
    // The last field: Enter there goes to the buttons.
    int ultimo() const { return Text1.size() - 1; }
};

// The payee and city registers: a code of five digits and a name.
class CadastroSimples : public Cadastro {
  public:
    void NovoRegistro();
    void AlteraRegistro();
    void ExcluiRegistro();
    int VerificaCampos(int Modo) { return verifica_campos(Modo); }

  protected:
    CadastroSimples(QString nome, QString caption, Sessao &sessao, Desktop &desktop, int tabela,
                    const QString &rotuloNome, int tamanhoNome, QString semSelecao);

    void grava(int Index) override;
    QString mascara(int Index) const override { return Index == 0 ? "00000" : QString(); }
    void carrega_linha(const QString &linha) override;

  private:
    // Stores the two fields into the current row (or a new one), then refreshes the screen.
    void regrava(bool novo);
    void atualiza();

    const int tamanhoNome_;
    const QString semSelecao_;
};

} // namespace vexa

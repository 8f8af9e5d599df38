#pragma once
// The entry screen: the hub of the program. A cheque is typed here, printed from here, and
// every other screen opens from its commands and menus. Its load runs the whole start-up.
#include "core/tela.h"
#include "store/registro_cheques.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <functional>
#include <map>
#include <memory>
#include <optional>

namespace vexa {

class Instancia;

class Main : public Tela {
  public:
    // linhaComando: the arguments of the start, another program's request.
    Main(Sessao &sessao, Desktop &desktop, const QString &linhaComando);
    ~Main() override;

    // --- the front of the cheque (there is no Text1(5))
    Matriz<Texto> Text1{{0, Texto()},       {1, Texto("", 16)}, {2, Texto("", 47)},
                        {3, Texto("", 20)}, {4, Texto()},       {6, Texto("", 12)}};
    // 0-5 the front's labels, 6 the bank's name, 7-16 the back's labels.
    Matriz<Rotulo> Label1;
    Rotulo Label2{"ddmmaa"}; // the hint beside the date
    Caixa CheckBox{"Incluir no relatório"};
    Quadro Frame1{"Cheque"};

    // --- the back, the comment lines and the extra fields
    Quadro Frame3{"Verso do Cheque"};
    Matriz<Texto> Text2;
    Quadro Frame4{"Campos Extras"};
    Matriz<Texto> TxtCpo;
    Matriz<Rotulo> Label4{"Campo 1:", "Campo 2:", "Campo 3:"};

    // --- the year's digits on the cheque
    Quadro Frame2{"Formato de Data"};
    Opcao Option1{"1 Dígito 199_"};
    Opcao Option2{"2 Dígitos 20__"};
    Opcao Option3{"4 Dígitos ____"};

    Painel Panel3D2{"F3 - Pesquisa  |  F8 - Limpa Campo  |  F4 - Grava Linha"};
    Medidor Gauge1;
    Rotulo Label3{"Impressão:"};
    // What became of the last print: printed, registered or not.
    Rotulo Situacao;
    // Which printer the program talks to, so the simulator is never taken for the printer.
    Rotulo RotuloImpressora;
    Imagem Image1;
    Temporizador Timer1{2500};

    Matriz<Botao> Opcoes{"Imprime C&heque", "Imprime &Verso",        "&Relatório",
                         "Limpa Cheq&ue",   "Limpa Ver&so",          "Cheque a Pra&zo",
                         "Imprime Có&pia",  "Cheque &Transferência", "Inutilizar &Folha"};

    // --- menus
    MenuItem Arquivo{"&Arquivo"};
    MenuItem Conf_Vexa{"C&onfigurações"};
    MenuItem MOpSoft{"Opções do Sof&tware"};
    MenuItem CopiaAgora{"Fazer cópia de segurança agora"};
    MenuItem RestauraCopia{"Restaurar cópia de segurança..."};

    MenuItem Importa{"&Importar do Vexa antigo..."};
    MenuItem Sair{"&Sair"};
    MenuItem Cadastro{"&Cadastro"};
    MenuItem Bank{"&Bancos"};
    MenuItem subChequeNormal{"Para Impressão de Cheque &Normal"};
    MenuItem subChequeTransferencia{"Para Impressão de Cheque &Transferência"};
    MenuItem Favor{"&Favorecidos"};
    MenuItem Cidad{"&Cidades"};
    MenuItem CpoX{"Campo &Extra"};
    MenuItem Layout{"&Layout de Cópia"};
    MenuItem Impressao{"&Impressão"};
    MenuItem Imp_Cheque{"&Cheque"};
    MenuItem Imp_ChequeTransf{"Cheque &Transferência"};
    MenuItem ch_pr{"Cheques a &Prazo"};
    MenuItem CopiaCheque{"Cópia do C&heque"};
    MenuItem Verso{"&Verso do Cheque"};
    MenuItem Relat{"&Relatório"};
    MenuItem Ajuda{"Aju&da"};
    MenuItem Topicos{"Aj&uda do Software Vexa Plus"};
    MenuItem Sobre_T{"&Sobre o Software Vexa Plus"};

    // The fields of a request, indexed as Text1; emptied as they reach the fields.
    QStringList ParametrosCheque;
    // The Index of the row the report sent to be reprinted; empty for a new cheque.
    QString IndexReimpresso;

    void Form_Load() override;
    void Form_Unload() override;
    // The window is in front again: the field that has the focus gets it anew, so a pick of
    // the search window enters the field that asked for it.
    void Form_Activate() override;

    // --- the screen's procedures
    void IniciaSessao();
    void LimpaTela();
    void LimpaFrente();
    void CarregaFrente();
    void LimpaVerso();
    bool ValidaCheque();
    // The report box back as the operator left it: a reprint from the report unticks it for
    // that one cheque, which is printed or abandoned.
    void DevolveCaixa();
    // The texts of the extra fields, in order.
    QStringList TextosExtras() const;
    // The bank's next number in the number field, unless the operator or a request put another
    // one there.
    void PropoeNumero();
    // A cheque went out on paper (Index: its row of Log, empty when unregistered): the book's
    // next number is proposed, and the leaf can be declared spoiled.
    void Impresso(const ChequeImpresso &Cheque, const QString &Index);
    // The last cheque printed came out wrong: its row stays, cancelled as a spoiled leaf, and the
    // same cheque waits for the next leaf with the next number.
    void InutilizaFolha();
    // The last cheque's leaf is spoiled and its row cancelled: the same cheque comes back,
    // with the book's next number, ready for the next leaf.
    void ProximaFolha();
    // A request's number already in the register is told here, before anything prints.
    void AvisaDuplicado();

    // --- handlers
    void Text1_Change(int Index);
    void Text1_GotFocus(int Index);
    void Text1_LostFocus(int Index);
    void Text1_KeyDown(int Index, int &KeyCode, int Shift);
    void Text2_Change(int Index);
    void Text2_GotFocus(int Index);
    void Text2_KeyDown(int Index, int &KeyCode, int Shift);
    void TxtCpo_GotFocus(int Index);
    void TxtCpo_LostFocus(int Index);
    void TxtCpo_KeyDown(int Index, int &KeyCode, int Shift);
    void Opcoes_Enter(int Index);
    void Opcoes_Click(int Index);
    void Option_Click(int Digitos);
    void Timer1_Timer();
    void Sair_Click();
    void CheckBox_Click();

    // A request that reached this running copy: the fields take their texts as if typed and
    // left, and the window comes forward. A request that comes while a command runs (a print
    // waiting for its document) or while another is served waits for it to end; the fields of
    // requests that wait together are merged, the later one's winning.
    void RecebePedido(const QMap<int, QString> &campos);

    // The rule of leaving a front field, without the focus: the bank with its name, the amount
    // through its mask, the date in "dd/mm/aa"; a bad value is emptied (with its message where
    // the field has one). False when the value was refused. The other fields pass as they are.
    bool NormalizaCampo(int Index);

  private:
    // The single-copy test: true when a running copy took the request (this one then ends).
    bool VerificaInstancia();
    // Opens another screen without blocking this one; one whose load failed is unloaded.
    Tela *abre(const QString &nome);
    // Binds a command to the screen it opens: disabled while the program has no such screen.
    void liga_tela(MenuItem &item, const QString &nome);
    // F8 empties a field; F4 stores it under its key (none: nothing is stored). True when
    // the key was one of the two.
    bool limpa_ou_grava(Texto &campo, int KeyCode, const QString &secao, const QString &chave);
    bool normaliza_banco();
    bool normaliza_valor();
    bool normaliza_data();
    void sai_data();
    void comando(int Index);
    // Serves the waiting requests one after the other, never inside one another.
    void atende_pedidos();
    void abre_campo_extra(int campo);
    void grava_caixa();

    QString linhaComando_;
    std::unique_ptr<Instancia> instancia_;
    bool entregue_ = false;
    QString dicaGuardada_;
    // Commands and requests being served: requests wait while it isn't 0.
    int ocupado_ = 0;
    QMap<int, QString> pedido_;
    bool temPedido_ = false;
    // The report box as the operator set it: at start from the settings, then by its clicks.
    int caixaEscolhida_ = 1;
    // The number the book proposed last: a number field still holding it follows the bank.
    QString numeroProposto_;
    // The last cheque printed in this run, for a spoiled leaf.
    std::optional<ChequeImpresso> ultimo_;
    bool proximaFolha_ = false; // the print ended with the same cheque back for the next leaf
    QString ultimoIndex_;
};

} // namespace vexa

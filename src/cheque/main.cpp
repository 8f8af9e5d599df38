// The entry screen itself: its controls and menus, the start-up and exit it runs, the requests
// of other programs, and its commands.
#include "cheque/main.h"

#include "catalogo/telas.h"
#include "cheque/extra.h"
#include "cheque/frente.h"
#include "cheque/pedidos.h"
#include "cheque/verso.h"
#include "core/conversoes.h"
#include "core/entrada.h"
#include "core/grava_ini.h"
#include "core/ini.h"
#include "core/inicio.h"
#include "core/instancia.h"
#include "core/teclas.h"
#include "printer/impressao.h"
#include "printer/vexa32.h"
#include "settings/copias.h"
#include "store/copia_seguranca.h"

#include "catalogo/telas.h"
#include "settings/importa.h"
#include "store/tabelas.h"
#include "store/talao.h"

#include <QFileInfo>
#include <utility>

namespace vexa {

Main::Main(Sessao &sessao, Desktop &desktop, const QString &linhaComando)
    : Tela(telas::Main, "Vexa - Plus Document Printer", sessao, desktop),
      linhaComando_(linhaComando) {
    LarguraJanela = 880;
    AlturaJanela = 600;
    ParametrosCheque = QStringList(7);

    const std::map<int, QString> rotulos = {{0, "Banco:"}, {1, "Valor:"},     {3, "Cidade:"},
                                            {4, "Data:"},  {5, "Nº Cheque:"}, {6, ""}};
    for (const auto &[i, c] : rotulos)
        Label1.mapa().emplace(i, Rotulo(c));
    for (int i = 0; i < 10; ++i) {
        const QString rotulo =
            i < 3 ? QStringLiteral("Cmd%1:").arg(i + 1) : QStringLiteral("Vrs%1:").arg(i + 1);
        Label1.mapa().emplace(i + 7, Rotulo(rotulo));
        Text2.mapa().emplace(i, Texto("", 60));
    }
    for (int i = 0; i < 3; ++i)
        TxtCpo.mapa().emplace(i, Texto());
    Label1[6].ToolTipText = "Nome do Banco";
    Label2.ForeColor = 0x808080; // a hint, not a label

    // Every print sweeps this gauge, also those of the screens opened from here.
    sessao.Gauge1 = &Gauge1;

    // Registered in the order of the screen: the focus walks them so.
    registra("Text1", Text1);
    registra("Label1", Label1);
    registra("Label2", Label2);
    registra("CheckBox", CheckBox);
    registra("Frame1", Frame1);
    registra("Frame3", Frame3);
    registra("Text2", Text2);
    registra("Frame4", Frame4);
    registra("TxtCpo", TxtCpo);
    registra("Label4", Label4);
    registra("Frame2", Frame2);
    for (Opcao *o : {&Option1, &Option2, &Option3})
        o->Container = &Frame2;
    registra("Option1", Option1);
    registra("Option2", Option2);
    registra("Option3", Option3);
    registra("Opcoes", Opcoes);
    registra("Panel3D2", Panel3D2);
    registra("Gauge1", Gauge1);
    registra("Label3", Label3);
    registra("Situacao", Situacao);
    registra("RotuloImpressora", RotuloImpressora);
    registra("Image1", Image1);
    registra("Timer1", Timer1);
    registra("Arquivo", Arquivo);
    registra("Conf_Vexa", Conf_Vexa);
    registra("MOpSoft", MOpSoft);
    registra("CopiaAgora", CopiaAgora);
    registra("RestauraCopia", RestauraCopia);

    registra("Importa", Importa);
    registra("Sair", Sair);
    registra("Cadastro", Cadastro);
    registra("Bank", Bank);
    registra("subChequeNormal", subChequeNormal);
    registra("subChequeTransferencia", subChequeTransferencia);
    registra("Favor", Favor);
    registra("Cidad", Cidad);
    registra("CpoX", CpoX);
    registra("Layout", Layout);
    registra("Impressao", Impressao);
    registra("Imp_Cheque", Imp_Cheque);
    registra("Imp_ChequeTransf", Imp_ChequeTransf);
    registra("ch_pr", ch_pr);
    registra("CopiaCheque", CopiaCheque);
    registra("Verso", Verso);
    registra("Relat", Relat);
    registra("Ajuda", Ajuda);
    registra("Topicos", Topicos);
    registra("Sobre_T", Sobre_T);

    liga("Text1", Evento::Change, [this](int i) { Text1_Change(i); });
    liga("Text1", Evento::GotFocus, [this](int i) { Text1_GotFocus(i); });
    liga("Text1", Evento::LostFocus, [this](int i) { Text1_LostFocus(i); });
    ligaTecla("Text1", Evento::KeyDown, [this](int i, int &k, int s) { Text1_KeyDown(i, k, s); });
    liga("Text2", Evento::Change, [this](int i) { Text2_Change(i); });
    liga("Text2", Evento::GotFocus, [this](int i) { Text2_GotFocus(i); });
    // A click in a back line is never a reason to check a front field.
    liga("Text2", Evento::Click, [this](int) { this->sessao.ValidaCampos = 0; });
    ligaTecla("Text2", Evento::KeyDown, [this](int i, int &k, int s) { Text2_KeyDown(i, k, s); });
    liga("TxtCpo", Evento::GotFocus, [this](int i) { TxtCpo_GotFocus(i); });
    liga("TxtCpo", Evento::LostFocus, [this](int i) { TxtCpo_LostFocus(i); });
    ligaTecla("TxtCpo", Evento::KeyDown, [this](int i, int &k, int s) { TxtCpo_KeyDown(i, k, s); });
    liga("Opcoes", Evento::Enter, [this](int i) { Opcoes_Enter(i); });
    liga("Opcoes", Evento::Click, [this](int i) { Opcoes_Click(i); });
    liga("Option1", Evento::Click, [this](int) { Option_Click(1); });
    liga("Option2", Evento::Click, [this](int) { Option_Click(2); });
    liga("Option3", Evento::Click, [this](int) { Option_Click(4); });
    liga("Timer1", Evento::Timer, [this](int) { Timer1_Timer(); });
    liga("Sair", Evento::Click, [this](int) { Sair_Click(); });
    liga("CheckBox", Evento::Click, [this](int) { CheckBox_Click(); });

    liga("Importa", Evento::Click, [this](int) { ImportaVexaAntigo(this->sessao, this->desktop); });
    liga("Imp_Cheque", Evento::Click, [this](int) { Opcoes_Click(0); });
    liga("Verso", Evento::Click, [this](int) { Opcoes_Click(1); });
    liga("CpoX", Evento::Click, [this](int) { abre(telas::CmpExtra); });
    liga("Topicos", Evento::Click, [this](int) { this->desktop.Ajuda("Conteudo"); });

    // The commands whose screens open without blocking this one.
    liga_tela(Relat, telas::Relato);
    liga_tela(ch_pr, telas::ChePrz);
    liga_tela(CopiaCheque, telas::CmpCopia);
    liga_tela(Imp_ChequeTransf, telas::ChequeTransf);
    liga_tela(Conf_Vexa, telas::Configura);
    liga_tela(MOpSoft, telas::OpSoft);
    liga_tela(subChequeNormal, telas::Bancos);
    liga_tela(subChequeTransferencia, telas::BancTrans);
    liga_tela(Favor, telas::Favorec);
    liga_tela(Cidad, telas::Cidade);
    liga_tela(Layout, telas::Script);
    liga_tela(Sobre_T, telas::Sobre);
    liga_tela(RestauraCopia, telas::Copias);
    liga("CopiaAgora", Evento::Click, [this](int) { copia_agora(this->sessao, this->desktop); });
    Opcoes[2].Enabled = Relat.Enabled;
    Opcoes[5].Enabled = ch_pr.Enabled;
    Opcoes[6].Enabled = CopiaCheque.Enabled;
    Opcoes[7].Enabled = Imp_ChequeTransf.Enabled;
    Opcoes[8].Enabled = false; // until a cheque is printed
}

Main::~Main() {
    if (sessao.Gauge1 == &Gauge1) sessao.Gauge1 = nullptr;
}

void Main::liga_tela(MenuItem &item, const QString &nome) {
    item.Enabled = tela_existe(nome);
    // The copy is the one of these that checks the cheque first.
    if (&item == &CopiaCheque) {
        liga(ref(item).Nome, Evento::Click, [this](int) { Opcoes_Click(6); });
        return;
    }
    liga(ref(item).Nome, Evento::Click, [this, nome](int) { abre(nome); });
}

Tela *Main::abre(const QString &nome) {
    return abre_tela(sessao, desktop, nome);
}

// --- start and stop

void Main::Form_Load() {
    if (!linhaComando_.trimmed().isEmpty()) ParametrosCheque = LeLinhaComando(linhaComando_);
    if (VerificaInstancia()) {
        entregue_ = true;
        Unload();
        return;
    }
    // The purges ask their questions; a request that comes meanwhile waits for the start.
    ++ocupado_;
    IniciaSessao();
    // A cheque printed by a run cut short before its register is asked about before anything
    // else reads the register.
    confere_pendentes(sessao, desktop);
    ExpurgaCheques(sessao, desktop);
    ExpurgaCopias(sessao, desktop);
    --ocupado_;
    if (temPedido_) atende_pedidos();
}

bool Main::VerificaInstancia() {
    instancia_ = std::make_unique<Instancia>(sessao.CaminhoApp);
    QMap<int, QString> campos;
    for (int i = 0; i < ParametrosCheque.size(); ++i)
        if (!ParametrosCheque[i].isEmpty()) campos.insert(i, ParametrosCheque[i]);
    if (instancia_->EntregaAoPrimeiro(campos)) return true;
    instancia_->aoReceber = [this](const QMap<int, QString> &c) { RecebePedido(c); };
    instancia_->Escuta();
    return false;
}

void Main::RecebePedido(const QMap<int, QString> &campos) {
    for (auto it = campos.begin(); it != campos.end(); ++it)
        pedido_[it.key()] = it.value();
    temPedido_ = true;
    // A message box of a command or of another request lets this one in: served from there it
    // would change the fields under the command, and a flood would stack boxes without end.
    if (ocupado_ == 0) atende_pedidos();
}

void Main::atende_pedidos() {
    ++ocupado_;
    while (temPedido_) {
        const QMap<int, QString> campos = std::exchange(pedido_, {});
        temPedido_ = false;
        for (auto it = campos.begin(); it != campos.end(); ++it)
            if (it.key() >= 0 && it.key() < ParametrosCheque.size())
                ParametrosCheque[it.key()] = it.value();
        AplicaParametros(*this);
        desktop.Mostra(*this);
        Refresh();
    }
    --ocupado_;
}

void Main::IniciaSessao() {
    CheckBox.Value = inicia_configuracoes(sessao) ? 1 : 0;
    caixaEscolhida_ = CheckBox.Value;
    if (!sessao.Impressora) sessao.Impressora = cria_impressora(sessao);
    RotuloImpressora.Caption = "Impressora: " + sessao.Impressora->Descricao();
    LimpaTela();
    desktop.Mostra(*this);

    const QString formato = LeGravaIni(sessao.CaminhoIni, "Opcoes", "ConfiguraData", "");
    if (formato != "-2") {
        const int digitos = int(Val(formato));
        Opcao *opcao = digitos == 4   ? &Option3
                       : digitos == 2 ? &Option2
                       : digitos == 1 ? &Option1
                                      : nullptr;
        if (opcao) {
            for (Opcao *o : {&Option1, &Option2, &Option3})
                o->Value = o == opcao ? 1 : 0;
            Option_Click(digitos);
        }
    }
    le_opcoes_numericas(sessao);
    AplicaParametros(*this);
    SetFocus("Text1", 0);
    Refresh();
}

void Main::Form_Unload() {
    // A copy that only handed its request over never read the settings it would write.
    if (entregue_) return;
    grava_caixa();
}

void Main::Form_Activate() {
    const RefControle foco = Foco();
    if (foco.Nome == "Text1") Text1_GotFocus(foco.Index);
}

void Main::Sair_Click() {
    grava_caixa();
    desktop.Encerra(0);
}

void Main::grava_caixa() {
    // The operator's own choice: a reprint's unticked box is for that one cheque.
    GravaIni(sessao, desktop, "Sistema", "InRel", caixaEscolhida_ ? "1" : "0");
}

void Main::CheckBox_Click() {
    caixaEscolhida_ = CheckBox.Value;
}

void Main::DevolveCaixa() {
    CheckBox.Value = caixaEscolhida_;
    IndexReimpresso.clear();
}

void Main::Timer1_Timer() {
    Image1.Visible = false;
    if (sessao.FaseInicio > 1) {
        sessao.FaseInicio = 0;
        Timer1.Interval = 10000;
        if (Tela *sobre = desktop.Aberta(telas::Sobre)) sobre->Unload();
        PrimeiraVez(sessao, desktop, [this] { abre(telas::Configura); });
    }
    if (sessao.FaseInicio == 1) sessao.FaseInicio = 2;
    const QString figura = sessao.CaminhoApp + (sessao.MostraLogo ? "/Qorna.bmp" : "/tolg01.bmp");
    sessao.MostraLogo = sessao.MostraLogo ? 0 : 1;
    if (QFileInfo::exists(figura)) Image1.Picture = figura;
    Image1.Visible = true;
}

// --- the commands

void Main::Opcoes_Click(int Index) {
    // Requests that come while a command runs wait for its end (see RecebePedido).
    ++ocupado_;
    comando(Index);
    --ocupado_;
    if (ocupado_ == 0 && temPedido_) atende_pedidos();
}

void Main::comando(int Index) {
    switch (Index) {
    case 0:
        if (!ValidaCheque()) return;
        if (!confere_duplicado(sessao, desktop, Text1[0].Text, Text1[6].Text, IndexReimpresso))
            return SetFocus("Text1", 6);
        if (ImprimeCamposExtras(sessao, desktop, TextosExtras()) != 1) {
            abre(telas::CmpExtra);
            return;
        }
        ImprimeFrente(*this, true);
        // A spoiled leaf leaves the same cheque on Imprime Cheque, for the next leaf.
        if (!std::exchange(proximaFolha_, false)) SetFocus("Text1", 0);
        break;
    case 1:
        ImprimeVerso(*this);
        SetFocus("Text2", 0);
        break;
    case 2:
        abre(telas::Relato);
        break;
    case 3:
        DevolveCaixa();
        Situacao.Caption.clear();
        LimpaFrente();
        SetFocus("Text1", 0);
        break;
    case 4:
        LimpaVerso();
        SetFocus("Text2", 0);
        break;
    case 5:
        abre(telas::ChePrz);
        break;
    case 6:
        if (ValidaCheque()) abre(telas::CmpCopia);
        break;
    case 7:
        abre(telas::ChequeTransf);
        break;
    case 8:
        InutilizaFolha();
        break;
    default:
        break;
    }
}

void Main::PropoeNumero() {
    if (!Text1[6].Text.isEmpty() && Text1[6].Text != numeroProposto_) return;
    const QString numero =
        Text1[0].Text.isEmpty() ? QString() : proximo_cheque(sessao, Text1[0].Text);
    if (numero.isEmpty() && numeroProposto_.isEmpty()) return;
    Muda(Text1[6], numero);
    numeroProposto_ = numero;
}

void Main::Impresso(const ChequeImpresso &Cheque, const QString &Index) {
    ultimo_ = Cheque;
    ultimoIndex_ = Index;
    Opcoes[8].Enabled = true;
    // The book's next number takes the place of the printed one; without a book the field
    // stays as it was.
    const QString proximo = proximo_cheque(sessao, Cheque.Banco);
    if (proximo.isEmpty()) return;
    Muda(Text1[6], proximo);
    numeroProposto_ = proximo;
}

void Main::InutilizaFolha() {
    if (!ultimo_) return;
    const QString cheque = descreve_cheque(ultimo_->Numero, ultimo_->Valor, ultimo_->Favorecido);
    if (desktop.MsgBox("A folha deste cheque saiu errada?\n\n" + cheque +
                           "\n\nEle fica no relatório como cancelado (\"" + FolhaInutilizada +
                           "\"), e o mesmo cheque fica pronto para a próxima folha.",
                       Botoes::YesNo, "Inutilizar Folha", Icone::Pergunta,
                       Resposta::Yes) != Resposta::Yes)
        return;
    if (!ultimoIndex_.isEmpty() && !inutiliza_folha(sessao, ultimoIndex_)) {
        desktop.MsgBox("A folha não foi inutilizada: o banco de dados \"" + sessao.NomeMDB +
                           "\" não aceitou a gravação.",
                       Botoes::OK, "Erro", Icone::Exclamacao);
        return;
    }
    ProximaFolha();
    proximaFolha_ = false; // asked for by its own key, not at the end of a print
}

void Main::ProximaFolha() {
    if (!ultimo_) return;
    const ChequeImpresso c = *std::exchange(ultimo_, std::nullopt);
    proximaFolha_ = true;
    Opcoes[8].Enabled = false;
    // The spoiled cheque's fields come back, with the book's next number.
    const std::pair<int, QString> campos[] = {
        {0, c.Banco}, {1, c.Valor}, {2, c.Favorecido}, {3, c.Cidade}, {4, c.Data}};
    for (const auto &[i, texto] : campos)
        Muda(Text1[i], texto);
    QString proximo = proximo_cheque(sessao, c.Banco);
    if (proximo.isEmpty()) proximo = proximo_numero(c.Numero.trimmed()).value_or(QString());
    Muda(Text1[6], proximo);
    numeroProposto_ = proximo;
    Situacao.Caption = "Folha do cheque " + c.Numero.trimmed() + " inutilizada; o cheque " +
                       Text1[6].Text.trimmed() + " está pronto para a próxima folha.";
    SetFocus("Opcoes", 0);
}

void Main::AvisaDuplicado() {
    const auto anterior = cheque_registrado(sessao, Text1[0].Text, Text1[6].Text);
    if (!anterior) return;
    desktop.MsgBox(descreve_duplicado(Text1[6].Text, *anterior) +
                       "\n\nO pedido de outro programa trouxe este número: confira-o antes de "
                       "imprimir.",
                   Botoes::OK, "Cheque já registrado", Icone::Exclamacao);
    SetFocus("Text1", 6);
}

void Main::Option_Click(int Digitos) {
    envia_formato_data(sessao, Digitos);
}

} // namespace vexa

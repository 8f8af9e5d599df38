// make capturas: opens every screen offscreen, as the operator would see it, and writes a
// PNG of each into the folder given.
#include "catalogo/telas.h"
#include "cheque/main.h"
#include "copy/script.h"
#include "core/ini.h"
#include "core/inicio.h"
#include "core/relogio.h"
#include "core/sessao.h"
#include "printer/impressao.h"
#include "registers/bancos.h"
#include "registers/banctrans.h"
#include "registers/cidade.h"
#include "registers/favorec.h"
#include "registers/pesquisa.h"
#include "registers/saida.h"
#include "reports/filtro.h"
#include "reports/relato.h"
#include "settings/calibra.h"
#include "settings/copias.h"
#include "store/copia_seguranca.h"
#include "store/historico.h"
#include "store/pasta_dados.h"
#include "store/tabelas.h"
#include "ui/aplicacao.h"
#include "ui/desktop_qt.h"

#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QMainWindow>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>
#include <functional>

using namespace vexa;

namespace {

QString destino;

void espera(int ms = 150) {
    QEventLoop laco;
    QTimer::singleShot(ms, &laco, &QEventLoop::quit);
    laco.exec();
}

void grava(QWidget *janela, const QString &nome) {
    espera();
    const QString arquivo = QDir(destino).filePath(nome + ".png");
    if (janela && janela->grab().save(arquivo))
        std::printf("  %s\n", qPrintable(arquivo));
    else
        std::printf("  %s: não foi possível gravar\n", qPrintable(arquivo));
}

// Types a text into a field of a screen and leaves it with Enter, as the operator does.
void digita(Tela &tela, const QString &campo, int indice, const QString &texto) {
    tela.SetFocus(campo, indice);
    tela.Digita(campo, indice, texto);
    tela.Tecla(13);
}

// Rows straight into a register's table.
void inclui(Sessao &s, Desktop &d, int tabela, const QList<QPair<QString, QString>> &linhas) {
    AbreTabelas(s, d, 0, 0, 0, 0);
    ExisteCodigo(s, QString(), tabela);
    RecordSet &rs = Conjunto(s, tabela);
    for (const auto &[codigo, nome] : linhas) {
        rs.AddNew();
        rs.Define("Codigo", codigo);
        rs.Define("Nome", nome);
        rs.Update();
    }
}

void escolhe_linha(Tela &tela, int linha) {
    if (auto *lista = tela.controle("List1")) lista->ListIndex = linha;
    tela.Dispara({"List1", -1}, Evento::Click);
    tela.Refresh();
}

// The registers: banks with a layout loaded and its graphic adjust, payees, cities, the
// search window and the print dialog.
void captura_registros(Sessao &sessao, ui::DesktopQt &desktop) {
    inclui(sessao, desktop, TabFavorecido,
           {{"00001", "Ana Maria de Souza"},
            {"00002", "Construtora Boa Vista Ltda."},
            {"00015", "José Conceição Pereira"},
            {"00120", "Mercado Central do Bairro"}});
    inclui(sessao, desktop, TabCidade,
           {{"00001", "Curitiba"}, {"00002", "Londrina"}, {"00003", "São José dos Pinhais"}});

    Tela *bancos = desktop.Abre(std::make_unique<Bancos>(sessao, desktop));
    if (!bancos) return;
    escolhe_linha(*bancos, 14);
    grava(desktop.Janela(*bancos), "bancos");
    bancos->Clica("Command3D2");
    if (Tela *ajusta = desktop.Aberta("Ajusta")) {
        ajusta->SetFocus("Text1", 3);
        ajusta->Refresh();
        grava(desktop.Janela(*ajusta), "ajusta-padrao");
        ajusta->Unload();
    }
    bancos->Unload();

    Tela *favorec = desktop.Abre(std::make_unique<Favorec>(sessao, desktop));
    if (favorec) {
        escolhe_linha(*favorec, 2);
        grava(desktop.Janela(*favorec), "favorec");
        favorec->Unload();
    }
    Tela *cidade = desktop.Abre(std::make_unique<Cidade>(sessao, desktop));
    if (cidade) {
        digita(*cidade, "Text1", 0, "4");
        cidade->Digita("Text1", 1, "Maringá");
        cidade->Refresh();
        grava(desktop.Janela(*cidade), "cidade");
        cidade->Unload();
    }

    sessao.TipoPesquisa = 0;
    Tela *pesquisa = desktop.Abre(std::make_unique<Pesquisa>(sessao, desktop));
    if (pesquisa) {
        pesquisa->Digita("Text1", 0, "A");
        pesquisa->Refresh();
        grava(desktop.Janela(*pesquisa), "pesquisa");
        pesquisa->Unload();
    }

    // The print dialog is modal in use; here it is shown as it opens, over nothing.
    sessao.TabelaLista = "Favorecido";
    auto saida = std::make_unique<Saida>(sessao, desktop);
    saida->SSPanel1.Caption = "Total = 4 Favorecidos ";
    if (Tela *s = desktop.Abre(std::move(saida))) {
        grava(desktop.Janela(*s), "saida");
        s->Unload();
    }
}

// The report of issued cheques, one of them cancelled, with two rows chosen; and the
// cancelling options opened over it.
void captura_relatorio(Sessao &sessao, ui::DesktopQt &desktop) {
    if (AbreTabelas(sessao, desktop, 0, 0, 0, 1) == -2) return;
    RecordSet &rs = Conjunto(sessao, TabLog);
    // Half a year of an office's cheques: four banks, a few cancelled, some with comments.
    const QStringList bancos = {"001", "237", "341", "104"};
    const QStringList favorecidos = {
        "Maria de Souza",         "Construtora Boa Vista Ltda.", "Mercado Central do Bairro",
        "José Conceição Pereira", "Papelaria Aliança",           "Companhia de Luz e Força",
        "Auto Posto Estrela",     "Dr. Antônio Ribeiro"};
    const QStringList cidades = {"Santos", "Curitiba", "Londrina", "Maringá", "São Paulo"};
    const QStringList comentarios = {"Aluguel da sala 5", "", "NF 2611", "",
                                     "Parcela 2 de 3",    "", ""};
    for (int n = 1; n <= 42; ++n) {
        const QString Index = QString("%1").arg(n, 10, 10, QChar('0'));
        const int mes = 1 + (n - 1) / 7, dia = 1 + (n * 11) % 27;
        const qint64 centavos = 4590 + (n * 7919 % 97) * 1733 + (n % 5 == 0 ? 1500000 : 0);
        rs.AddNew();
        rs.Define("Index", Index);
        rs.Define("Codigo", Index.right(5));
        rs.Define("Banco", bancos[(n * 3) % bancos.size()]);
        rs.Define("V_CH",
                  QString("%1,%2").arg(centavos / 100).arg(centavos % 100, 2, 10, QChar('0')));
        rs.Define("Favor", favorecidos[n % favorecidos.size()]);
        rs.Define("Local", cidades[n % cidades.size()]);
        rs.Define("Data",
                  QString("%1/%2/99").arg(dia, 2, 10, QChar('0')).arg(mes, 2, 10, QChar('0')));
        rs.Define("NRCH", QString("%1").arg(122 + n, 6, 10, QChar('0')));
        rs.Define("Comentario", comentarios[n % comentarios.size()]);
        rs.Define("StCancel", n % 9 == 2 ? "C" : " ");
        rs.Update();
    }
    FechaTabelas(sessao, 0, 0, 0, 1);
    Tela *relato = desktop.Abre(std::make_unique<Relato>(sessao, desktop));
    if (!relato) return;
    auto &lista = static_cast<Relato *>(relato)->List1;
    lista.SetSelected(0, true);
    lista.SetSelected(2, true);
    escolhe_linha(*relato, 2);
    grava(desktop.Janela(*relato), "relato");
    // One bank's cheques: the filter's sign over the table, the chart of that bank alone.
    MontaFiltroLog(sessao, desktop, "237", "", "", "", "", "", "", "");
    grava(desktop.Janela(*relato), "relato-filtro");
    relato->Clica("SSCommand5");
    relato->Clica("SSCommand4");
    if (Tela *cancela = desktop.Aberta("ExcluiRel")) {
        grava(desktop.Janela(*cancela), "excluirel");
        cancela->Unload();
    }
    const QString mostrado = static_cast<Relato *>(relato)->Mostrado;
    grava_historico(sessao, mostrado, "Reimpressão");
    grava_historico(sessao, mostrado, "Folha inutilizada");
    relato->Clica("Historico");
    if (Tela *historico = desktop.Aberta(telas::HistoricoCheque)) {
        grava(desktop.Janela(*historico), "historico");
        historico->Unload();
    }
    relato->Unload();
}

// The transfer cheque as the operator fills it in, each field left with Enter.
void preenche_transferencia(Tela &transf) {
    digita(transf, "txtBanco", -1, "001");
    digita(transf, "txtValor", -1, "1234,5");
    digita(transf, "txtAgencia", -1, "Centro 0123");
    digita(transf, "txtConta", -1, "45678-9");
    digita(transf, "txtCidade", -1, "Curitiba");
    digita(transf, "txtNumeroCheque", -1, "000123");
    transf.SetFocus("txtComentario");
}

// The screens opened over the entry screen's cheque or from the registers: the report's
// filter; the transfer cheque filled in on a registered bank, and its layouts with that bank
// chosen and its graphic adjust; the copy layouts with the adjust of the first, and the copy of the
// entry screen's cheque composed by the layout last chosen.
void captura_outras(Sessao &sessao, ui::DesktopQt &desktop) {
    // Bank 001 comes out of the box with a transfer layout and a copy layout: the screens show
    // them as a new office finds them.
    if (Tela *main = desktop.Aberta(telas::Main)) main->Digita("Text2", 0, "Aluguel de março");
    for (const QString &nome :
         {telas::Filtro, telas::ChequeTransf, telas::BancTrans, telas::Script, telas::CmpCopia}) {
        Tela *tela = desktop.Abre(cria_tela(nome, sessao, desktop));
        if (!tela) continue;
        if (nome == telas::ChequeTransf) preenche_transferencia(*tela);
        if (nome == telas::BancTrans || nome == telas::Script) escolhe_linha(*tela, 0);
        tela->Refresh();
        grava(desktop.Janela(*tela), nome.toLower());
        // "Ajuste Gráfico" of the layout chosen.
        if (nome == telas::BancTrans || nome == telas::Script) {
            tela->Clica("Command3D2");
            const QString ajuste =
                nome == telas::BancTrans ? telas::AjustaChequeTransferencia : telas::AjusteScript;
            if (Tela *a = desktop.Aberta(ajuste)) {
                a->Refresh();
                grava(desktop.Janela(*a), ajuste.toLower());
                a->Unload();
            }
        }
        tela->Unload();
    }
}

// The post-dated cheques with a schedule of three instalments typed in, their numbers, bank,
// city and payee, as they stand before Imprimir.
void captura_prazo(Sessao &sessao, ui::DesktopQt &desktop) {
    Tela *prazo = desktop.Abre(cria_tela(telas::ChePrz, sessao, desktop));
    if (!prazo) return;
    digita(*prazo, "Text1", 0, "1000");
    digita(*prazo, "DataPre", -1, "100127");
    digita(*prazo, "prazo", -1, "30");
    digita(*prazo, "parcelas", -1, "3");
    digita(*prazo, "Text4", 0, "000501");
    digita(*prazo, "Text3", 0, "1");
    digita(*prazo, "Text3", 1, "Maringá");
    digita(*prazo, "Text3", 2, "Construtora São Jorge");
    prazo->Refresh();
    for (QLineEdit *e : desktop.Janela(*prazo)->findChildren<QLineEdit *>())
        if (!e->hasFocus()) e->deselect();
    grava(desktop.Janela(*prazo), "cheprz");
    prazo->Unload();
}

// The settings screens, the About screen and the help's contents page.
void captura_configuracoes(Sessao &sessao, ui::DesktopQt &desktop) {
    if (Tela *configura = desktop.Abre(cria_tela(telas::Configura, sessao, desktop))) {
        grava(desktop.Janela(*configura), "configura");
        configura->Unload();
    }
    if (Tela *calibra = desktop.Abre(cria_tela(telas::Calibra, sessao, desktop))) {
        grava(desktop.Janela(*calibra), "calibra");
        calibra->Unload();
    }
    // The backups screen with the day's copy in its list.
    faz_copia(sessao);
    if (Tela *copias = desktop.Abre(cria_tela(telas::Copias, sessao, desktop))) {
        grava(desktop.Janela(*copias), "copias");
        copias->Unload();
    }
    if (Tela *opsoft = desktop.Abre(cria_tela(telas::OpSoft, sessao, desktop))) {
        grava(desktop.Janela(*opsoft), "opsoft");
        opsoft->Unload();
    }
    // Past the start's first seconds, as the operator opens it from the menu.
    sessao.FaseInicio = 0;
    if (Tela *sobre = desktop.Abre(cria_tela(telas::Sobre, sessao, desktop))) {
        grava(desktop.Janela(*sobre), "sobre");
        sobre->Unload();
    }
    desktop.Ajuda("Conteudo");
    // Found before grava, whose wait lets Qt delete the windows of screens closed above.
    QWidget *ajuda = nullptr;
    for (QWidget *w : QApplication::topLevelWidgets())
        if (w->objectName() == "Ajuda" && w->isVisible()) ajuda = w;
    if (ajuda) {
        grava(ajuda, "ajuda-conteudo");
        ajuda->close();
    }
}

} // namespace

int main(int argc, char *argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    ui::prepara_aplicacao(app);
    destino = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("capturas");
    QDir().mkpath(destino);

    QTemporaryDir pasta;
    fixa_hoje(QDate(2026, 11, 22));
    Sessao sessao(pasta.path());
    prepara_pasta_dados(sessao);
    // The first-run message would come over the screens.
    LeGravaIni(sessao.CaminhoIni, "Config", "FirstTime", "*%*");
    sessao.Impressora = cria_impressora(sessao);
    ui::DesktopQt desktop;

    std::printf("Capturas em %s:\n", qPrintable(destino));
    Tela *main = desktop.Abre(std::make_unique<Main>(sessao, desktop, QString()));
    if (!main) return 1;
    grava(desktop.Janela(*main), "main-vazia");

    digita(*main, "Text1", 0, "1");
    digita(*main, "Text1", 1, "1234,5");
    digita(*main, "Text1", 2, "Maria");
    digita(*main, "Text1", 3, "Santos");
    digita(*main, "Text1", 4, "5/3/99");
    digita(*main, "Text1", 6, "000123");
    main->Refresh();
    // Typed through the model, every field kept the selection of its turn with the focus.
    for (QLineEdit *e : desktop.Janela(*main)->findChildren<QLineEdit *>())
        if (!e->hasFocus()) e->deselect();
    grava(desktop.Janela(*main), "main-cheque");

    // The positions of the extra fields, as F3 in the first one opens them.
    main->SetFocus("TxtCpo", 0);
    main->Tecla(114);
    main->Refresh();
    if (Tela *extra = desktop.Aberta("CmpExtra")) grava(desktop.Janela(*extra), "cmpextra");

    captura_registros(sessao, desktop);
    captura_relatorio(sessao, desktop);
    captura_configuracoes(sessao, desktop);
    captura_outras(sessao, desktop);
    captura_prazo(sessao, desktop);
    return 0;
}

#include "apoio/janelas.h"
#include "cheque/main.h"
#include "core/desktop_roteiro.h"
#include "core/ini.h"
#include "core/inicio.h"
#include "core/instancia.h"
#include "core/relogio.h"
#include "printer/simulador.h"
#include "store/pasta_dados.h"
#include "store/tabelas.h"
#include "ui/desktop_qt.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QLocalSocket>
#include <QMainWindow>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

using namespace vexa;

using teste::foco;

namespace {

QString le(const QString &arquivo) {
    QFile f(arquivo);
    return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
}

// The window of the entry screen over a fresh data folder, with the simulated printer.
class JanelaMain : public ::testing::Test {
  protected:
    void SetUp() override {
        prepara_pasta_dados(s);
        LeGravaIni(s.CaminhoIni, "Config", "FirstTime", "*%*");
        s.Impressora = std::make_unique<Simulador>(s.CaminhoApp);
        tela = desktop.Abre(std::make_unique<Main>(s, desktop, QString()));
        ASSERT_NE(tela, nullptr);
        janela = desktop.Janela(*tela);
        ASSERT_TRUE(QTest::qWaitForWindowActive(janela));
    }
    void TearDown() override {
        for (const QString &nome : {telas::CmpExtra, telas::Main})
            if (Tela *t = desktop.Aberta(nome)) desktop.Fecha(*t);
    }
    template <class W> W *w(QWidget *raiz, const char *nome) {
        W *achado = raiz->findChild<W *>(nome);
        EXPECT_NE(achado, nullptr) << nome;
        return achado;
    }

    QTemporaryDir pasta;
    Sessao s{pasta.path()};
    ui::DesktopQt desktop;
    Tela *tela = nullptr;
    QMainWindow *janela = nullptr;
    teste::Respondedor respostas;
};

// The worked cheque, typed key by key into the real window and printed on the simulator.
TEST_F(JanelaMain, ChequeDigitadoTeclaATeclaSaiNoPapelENoLog) {
    auto &imp = static_cast<Simulador &>(*s.Impressora);
    ASSERT_EQ(foco(), "Text1(0)");
    const QList<std::pair<QString, QString>> campos = {
        {"Text1(0)", "1"},      {"Text1(1)", "1234,5"}, {"Text1(2)", "Maria"},
        {"Text1(3)", "Santos"}, {"Text1(4)", "5/3/99"}, {"Text1(6)", "000123"}};
    for (const auto &[campo, texto] : campos) {
        ASSERT_EQ(foco(), campo);
        QTest::keyClicks(QApplication::focusWidget(), texto);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    }
    const auto texto = [&](const char *nome) {
        return janela->findChild<QLineEdit *>(nome)->text();
    };
    EXPECT_EQ(texto("Text1(0)"), "001");
    EXPECT_EQ(janela->findChild<QLabel *>("Label1(6)")->text(), NomeBanco(s, "001"));
    EXPECT_EQ(texto("Text1(1)"), "1.234,50");
    EXPECT_EQ(texto("Text1(4)"), "05/03/99");
    ASSERT_EQ(foco(), "Opcoes(0)");

    imp.LimpaChamadas();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(respostas.Vistas, QStringList{"Impressão do Cheque: Insira o Documento.\n\n"
                                            "Cheque 000123 — R$ 1.234,50 — Maria"});
    EXPECT_EQ(imp.Chamadas(),
              (QStringList{"IniciaPorta(COM2)",
                           "ImprimeCheque(001|1.234,50|Maria|Santos|05/03/99|)", "FechaPorta()"}));
    // The bank takes the focus again, once the window is active after the box.
    ASSERT_NE(janela->focusWidget(), nullptr);
    EXPECT_EQ(janela->focusWidget()->objectName(), "Text1(0)");
    EXPECT_EQ(texto("Text1(2)"), "Maria"); // the fields stay for the next cheque

    // The face: figures, words, payee, city and date where the bank's layout puts them.
    const QString papel = le(imp.ArquivoPapel(imp.UltimoPapel()));
    const QString referencia = le(QStringLiteral(VEXA_TESTES_DADOS) + "/papel/cheque_001.txt");
    ASSERT_FALSE(referencia.isEmpty());
    EXPECT_EQ(papel, referencia);
    EXPECT_TRUE(papel.contains("#1.234,50#"));
    EXPECT_TRUE(papel.contains("Mil, Duzentos e Trinta e Quatro Reais e Cinquenta Centavos"));

    ASSERT_NE(AbreTabelas(s, desktop, 0, 0, 0, 1), -2);
    RecordSet &log = Conjunto(s, TabLog);
    ASSERT_EQ(log.RecordCount(), 1);
    log.MoveFirst();
    const QStringList linha = {log["Index"], log["Codigo"], log["Banco"],
                               log["V_CH"],  log["Favor"],  log["Local"],
                               log["Data"],  log["NRCH"],   log["StCancel"]};
    FechaTabelas(s, 0, 0, 0, 1);
    EXPECT_EQ(linha, (QStringList{"0000000001", "00001", "001", "1234,5", "Maria", "Santos",
                                  "05/03/99", "000123", " "}));
}

// The clearing command takes the focus before the bad amount is left: no message, the amount
// is emptied and the back's first line gets the focus.
TEST_F(JanelaMain, LimparVersoComValorRuimNaoReclama) {
    QLineEdit *valor = w<QLineEdit>(janela, "Text1(1)");
    valor->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return valor->hasFocus(); }, 2000));
    QTest::keyClicks(valor, "12x");
    QTest::mouseClick(w<QPushButton>(janela, "Opcoes(4)"), Qt::LeftButton);
    EXPECT_TRUE(respostas.Vistas.isEmpty()) << respostas.Vistas.join('|').toStdString();
    EXPECT_EQ(valor->text(), "");
    EXPECT_EQ(foco(), "Text2(0)");
}

// F3 in the second extra field opens "Programa Campo" on that field; a line past 20 is
// refused, a good position is stored, and Fechar closes the screen.
TEST_F(JanelaMain, F3NoCampoExtraProgramaAPosicao) {
    QLineEdit *extra = w<QLineEdit>(janela, "TxtCpo(1)");
    extra->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return extra->hasFocus(); }, 2000));
    QTest::keyClick(extra, Qt::Key_F3);
    Tela *cmp = desktop.Aberta(telas::CmpExtra);
    ASSERT_NE(cmp, nullptr);
    QMainWindow *programa = desktop.Janela(*cmp);
    ASSERT_TRUE(QTest::qWaitForWindowActive(programa));
    EXPECT_EQ(programa->windowTitle(), "Programa Campo");
    EXPECT_TRUE(w<QPushButton>(programa, "CmdNumCampo(1)")->isChecked());
    EXPECT_FALSE(w<QPushButton>(programa, "CmdNumCampo(0)")->isChecked());
    ASSERT_EQ(foco(), "PosText(0)");

    QTest::keyClicks(QApplication::focusWidget(), "2a1");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    ASSERT_EQ(foco(), "PosText(1)");
    QTest::keyClicks(QApplication::focusWidget(), "100");
    QTest::mouseClick(w<QPushButton>(programa, "BtnCmd(0)"), Qt::LeftButton);
    EXPECT_EQ(respostas.Vistas, QStringList{"Erro: Campo incorreto"});
    EXPECT_EQ(LeGravaIni(s.CaminhoIni, "FrenteInfo", "Campo01Lin", ""), "-2");

    QLineEdit *linha = w<QLineEdit>(programa, "PosText(0)");
    linha->setFocus();
    linha->selectAll();
    QTest::keyClicks(linha, "20");
    QTest::mouseClick(w<QPushButton>(programa, "BtnCmd(0)"), Qt::LeftButton);
    EXPECT_EQ(LeGravaIni(s.CaminhoIni, "FrenteInfo", "Campo01Lin", ""), "20");
    EXPECT_EQ(LeGravaIni(s.CaminhoIni, "FrenteInfo", "Campo01Col", ""), "100");

    QTest::mouseClick(w<QPushButton>(programa, "BtnCmd(2)"), Qt::LeftButton);
    EXPECT_EQ(desktop.Aberta(telas::CmpExtra), nullptr);
}

// The longer key hint of an extra field neither widens the window nor stays after it.
TEST_F(JanelaMain, DicaDoCampoExtraNaoAlargaAJanela) {
    const int largura = janela->width();
    auto *dica = w<QLabel>(janela, "Panel3D2");
    const QString normal = dica->text();
    QLineEdit *extra = w<QLineEdit>(janela, "TxtCpo(0)");
    extra->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return extra->hasFocus(); }, 2000));
    EXPECT_EQ(dica->text(), "F3 - Programa Campo  |  F8 - Limpa Campo  |  F4 - Grava Linha");
    QTest::qWait(0);
    EXPECT_EQ(janela->width(), largura);
    QLineEdit *banco = w<QLineEdit>(janela, "Text1(0)");
    banco->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return banco->hasFocus(); }, 2000));
    EXPECT_EQ(dica->text(), normal);
    EXPECT_EQ(janela->width(), largura);
}

// A program's own process, with its data under a folder of the test.
class Copia {
  public:
    explicit Copia(const QString &casa) {
        // The runtime folder stays the test's own, so that both find the same link.
        ambiente_ = QProcessEnvironment::systemEnvironment();
        ambiente_.insert("HOME", casa);
        ambiente_.insert("XDG_DATA_HOME", casa + "/dados");
        ambiente_.insert("QT_QPA_PLATFORM", "offscreen");
    }
    // The data folder the program takes under these settings.
    static QString PastaDados(const QString &casa) { return casa + "/dados/VexaPlus/Vexa Plus"; }

    void inicia(QProcess &p, const QStringList &argumentos) const {
        p.setProcessEnvironment(ambiente_);
        p.start(QStringLiteral(VEXA_PROGRAMA), argumentos);
    }

  private:
    QProcessEnvironment ambiente_;
};

int folhas(const QString &pastaDados) {
    return int(QDir(pastaDados + "/impressora/papel").entryList({"*.txt"}, QDir::Files).size());
}

// Two real copies: the second finds the first, hands over its fields and ends.
TEST(UmaCopiaSo, SegundaPartidaEntregaETermina) {
    QTemporaryDir casa;
    const Copia copia(casa.path());
    QProcess primeira;
    copia.inicia(primeira, {});
    ASSERT_TRUE(primeira.waitForStarted(10000));
    const QString link = Instancia::NomeLink(Copia::PastaDados(casa.path()));
    // The first copy is up once its link answers.
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            QLocalSocket s;
            s.connectToServer(link);
            return s.waitForConnected(200);
        },
        30000));

    for (const QStringList &argumentos : {QStringList{"/B237/V99,90/FJoao"}, QStringList{}}) {
        QProcess segunda;
        copia.inicia(segunda, argumentos);
        ASSERT_TRUE(segunda.waitForFinished(20000)) << argumentos.join(' ').toStdString();
        EXPECT_EQ(segunda.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(segunda.exitCode(), 0);
    }
    EXPECT_EQ(primeira.state(), QProcess::Running);
    EXPECT_EQ(folhas(Copia::PastaDados(casa.path())), 0);
    primeira.kill();
    primeira.waitForFinished(10000);
}

// The running copy here, a real second start: its fields change as typed and left, nothing
// prints.
TEST(UmaCopiaSo, CamposChegamNaCopiaAberta) {
    QTemporaryDir casa;
    const QString dados = Copia::PastaDados(casa.path());
    Sessao s(dados);
    prepara_pasta_dados(s);
    LeGravaIni(s.CaminhoIni, "Config", "FirstTime", "*%*");
    s.Impressora = std::make_unique<Simulador>(s.CaminhoApp);
    ui::DesktopQt desktop;
    auto *main = static_cast<Main *>(desktop.Abre(std::make_unique<Main>(s, desktop, QString())));
    ASSERT_NE(main, nullptr);
    QMainWindow *janela = desktop.Janela(*main);
    janela->showMinimized();

    QProcess segunda;
    Copia(casa.path()).inicia(segunda, {"/B237/V99,90/FJoao/D050399"});
    ASSERT_TRUE(QTest::qWaitFor([&] { return segunda.state() == QProcess::NotRunning; }, 20000));
    EXPECT_EQ(segunda.exitCode(), 0);
    EXPECT_EQ(janela->findChild<QLineEdit *>("Text1(0)")->text(), "237");
    EXPECT_EQ(janela->findChild<QLineEdit *>("Text1(1)")->text(), "99,90");
    EXPECT_EQ(janela->findChild<QLineEdit *>("Text1(2)")->text(), "Joao");
    EXPECT_EQ(janela->findChild<QLineEdit *>("Text1(4)")->text(), "05/03/99");
    EXPECT_FALSE(janela->isMinimized());
    EXPECT_EQ(static_cast<Simulador &>(*s.Impressora).UltimoPapel(), 0);
    desktop.Fecha(*main);
}

bool link_responde(const QString &pastaDados) {
    QLocalSocket s;
    s.connectToServer(Instancia::NomeLink(pastaDados));
    return s.waitForConnected(200);
}

// Many starts at once on a new data folder: one copy runs, every other hands over and ends,
// and the folder is laid down once, whole.
TEST(UmaCopiaSo, PartidasSimultaneasDeixamUmaSo) {
    QTemporaryDir casa;
    const Copia copia(casa.path());
    std::vector<std::unique_ptr<QProcess>> copias;
    for (int i = 0; i < 12; ++i) {
        copias.push_back(std::make_unique<QProcess>());
        copia.inicia(*copias.back(), {QStringLiteral("/C%1").arg(i)});
    }
    const auto rodando = [&] {
        return std::count_if(copias.begin(), copias.end(),
                             [](const auto &p) { return p->state() != QProcess::NotRunning; });
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return rodando() <= 1; }, 60000)) << rodando();
    ASSERT_EQ(rodando(), 1);
    for (const auto &p : copias) {
        if (p->state() == QProcess::NotRunning) {
            EXPECT_EQ(p->exitCode(), 0);
        }
    }
    const QString dados = Copia::PastaDados(casa.path());
    EXPECT_TRUE(QTest::qWaitFor([&] { return link_responde(dados); }, 20000));
    Sessao s(dados);
    DesktopRoteiro d;
    EXPECT_EQ(AbreTabelas(s, d, 1, 0, 0, 0), 1);
    EXPECT_EQ(LeGravaIni(s.CaminhoIni, "Config", "FirstTime", ""), "1");
    for (const auto &p : copias) {
        p->kill();
        p->waitForFinished(10000);
    }
}

// A copy killed where it stood leaves its lock file and its socket behind: the next start
// takes both over and runs, and a start after it hands over to it.
TEST(UmaCopiaSo, CopiaMortaDeixaTravaELinkParaAProxima) {
    QTemporaryDir casa;
    const Copia copia(casa.path());
    const QString dados = Copia::PastaDados(casa.path());
    QProcess morta;
    copia.inicia(morta, {});
    ASSERT_TRUE(QTest::qWaitFor([&] { return link_responde(dados); }, 30000));
    morta.kill();
    ASSERT_TRUE(morta.waitForFinished(10000));
    ASSERT_TRUE(QFile::exists(Instancia::NomeLink(dados)));
    ASSERT_TRUE(QFile::exists(dados + "/VEXA.lock"));

    QProcess viva;
    copia.inicia(viva, {});
    ASSERT_TRUE(QTest::qWaitFor([&] { return link_responde(dados); }, 30000));
    EXPECT_EQ(viva.state(), QProcess::Running);

    QProcess terceira;
    copia.inicia(terceira, {"/B237"});
    ASSERT_TRUE(terceira.waitForFinished(20000));
    EXPECT_EQ(terceira.exitCode(), 0);
    EXPECT_EQ(viva.state(), QProcess::Running);
    viva.kill();
    viva.waitForFinished(10000);
}

} // namespace

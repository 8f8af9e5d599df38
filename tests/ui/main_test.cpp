#include "apoio/janelas.h"
#include "apoio/referencia.h"
#include "apoio/registro_log.h"
#include "cheque/main.h"
#include "core/conversoes.h"
#include "core/desktop_roteiro.h"
#include "core/ini.h"
#include "core/inicio.h"
#include "core/instancia.h"
#include "core/relogio.h"
#include "printer/simulador.h"
#include "store/pasta_dados.h"
#include "store/tabelas.h"
#include "ui/desktop_qt.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QLocalSocket>
#include <QMainWindow>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

using namespace vexa;

using teste::foco;

namespace {

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
        for (const QString &nome : {telas::CmpExtra, telas::ChePrz, telas::Main})
            if (Tela *t = desktop.Aberta(nome)) desktop.Fecha(*t);
    }
    template <class W> W *w(QWidget *raiz, const char *nome) {
        W *achado = raiz->findChild<W *>(nome);
        EXPECT_NE(achado, nullptr) << nome;
        return achado;
    }
    // Types key by key into the field with the focus, which must be `campo`, and presses
    // Enter; an accented letter is a key that carries its text.
    static void digita(const QString &campo, const QString &texto) {
        ASSERT_EQ(foco(), campo);
        QWidget *w = QApplication::focusWidget();
        for (const QChar c : texto)
            if (c.unicode() < 128)
                QTest::keyClick(w, c.toLatin1());
            else
                QTest::sendKeyEvent(QTest::Click, w, Qt::Key_unknown, QString(c), Qt::NoModifier);
        QTest::keyClick(w, Qt::Key_Return);
    }
    // The texts of the fields nome(de) to nome(de + n - 1) of a window.
    static QStringList textos(QWidget *j, const QString &nome, int de, int n) {
        QStringList r;
        for (int i = de; i < de + n; ++i)
            r << j->findChild<QLineEdit *>(QStringLiteral("%1(%2)").arg(nome).arg(i))->text();
        return r;
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
    for (const auto &[campo, texto] : campos)
        digita(campo, texto);
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
    teste::confere_referencia(teste::le_utf8(imp.ArquivoPapel(imp.UltimoPapel())),
                              "papel/cheque_001.txt");

    const auto log = teste::linhas_do_log(s, desktop);
    ASSERT_EQ(log.size(), 1);
    const QStringList linha = {log[0]["Index"], log[0]["Codigo"], log[0]["Banco"],
                               log[0]["V_CH"],  log[0]["Favor"],  log[0]["Local"],
                               log[0]["Data"],  log[0]["NRCH"],   log[0]["StCancel"]};
    EXPECT_EQ(linha, (QStringList{"0000000001", "00001", "001", "1234,5", "Maria", "Santos",
                                  "05/03/99", "000123", " "}));
}

// An extra field's longer key hint neither widens the window nor stays after it; F3 in the
// second extra field opens "Programa Campo" on that field.
TEST_F(JanelaMain, CampoExtraDaSuaDicaEF3AbreAPosicao) {
    const int largura = janela->width();
    auto *dica = w<QLabel>(janela, "Panel3D2");
    const QString normal = dica->text();
    const auto focaliza = [&](const char *nome) {
        QLineEdit *campo = w<QLineEdit>(janela, nome);
        campo->setFocus();
        EXPECT_TRUE(QTest::qWaitFor([&] { return campo->hasFocus(); }, 2000)) << nome;
        QTest::qWait(0);
        EXPECT_EQ(janela->width(), largura) << nome;
        return campo;
    };
    focaliza("TxtCpo(0)");
    EXPECT_EQ(dica->text(), "F3 - Programa Campo  |  F8 - Limpa Campo  |  F4 - Grava Linha");
    focaliza("Text1(0)");
    EXPECT_EQ(dica->text(), normal);

    QTest::keyClick(focaliza("TxtCpo(1)"), Qt::Key_F3);
    Tela *cmp = desktop.Aberta(telas::CmpExtra);
    ASSERT_NE(cmp, nullptr);
    QMainWindow *programa = desktop.Janela(*cmp);
    ASSERT_TRUE(QTest::qWaitForWindowActive(programa));
    EXPECT_EQ(programa->windowTitle(), "Programa Campo");
    EXPECT_TRUE(w<QPushButton>(programa, "CmdNumCampo(1)")->isChecked());
    EXPECT_FALSE(w<QPushButton>(programa, "CmdNumCampo(0)")->isChecked());
    EXPECT_EQ(foco(), "PosText(0)");
    QTest::mouseClick(w<QPushButton>(programa, "BtnCmd(2)"), Qt::LeftButton);
    EXPECT_EQ(desktop.Aberta(telas::CmpExtra), nullptr);
}

// The post-dated cheques' window, opened from the entry screen without holding it: a schedule
// of three instalments typed key by key, printed on the simulator, and registered.
TEST_F(JanelaMain, TresParcelasDigitadasSaemNoPapelENoLog) {
    auto &imp = static_cast<Simulador &>(*s.Impressora);
    auto *relatorio = w<QCheckBox>(janela, "CheckBox");
    if (!relatorio->isChecked()) QTest::mouseClick(relatorio, Qt::LeftButton);
    ASSERT_TRUE(relatorio->isChecked());

    QTest::mouseClick(w<QPushButton>(janela, "Opcoes(5)"), Qt::LeftButton);
    Tela *tela = desktop.Aberta(telas::ChePrz);
    ASSERT_NE(tela, nullptr);
    QMainWindow *prazo = desktop.Janela(*tela);
    ASSERT_TRUE(QTest::qWaitForWindowActive(prazo));
    EXPECT_EQ(prazo->windowTitle(), "Impressão de Cheques a Prazo");
    EXPECT_NE(desktop.Aberta(telas::Main), nullptr);

    digita("Text1(0)", "1000");
    digita("DataPre", "100127");
    digita("prazo", "30");
    digita("parcelas", "3");
    EXPECT_EQ(textos(prazo, "Text1", 0, 1), QStringList{"1.000,00"});
    EXPECT_EQ(w<QLineEdit>(prazo, "DataPre")->text(), "10/01/27");
    EXPECT_EQ(textos(prazo, "Text1", 1, 4), QStringList({"00", "30", "60", ""}));
    EXPECT_EQ(foco(), "Text1(13)");
    EXPECT_EQ(textos(prazo, "Text1", 13, 4), QStringList({"10/01/27", "09/02/27", "11/03/27", ""}));
    EXPECT_EQ(textos(prazo, "Text2", 0, 4), QStringList({"333,34", "333,33", "333,33", ""}));

    // The first cheque's number numbers the others.
    QTest::mouseClick(w<QLineEdit>(prazo, "Text4(0)"), Qt::LeftButton);
    digita("Text4(0)", "000501");
    EXPECT_EQ(textos(prazo, "Text4", 0, 4), QStringList({"000501", "000502", "000503", ""}));
    digita("Text3(0)", "1");
    EXPECT_EQ(textos(prazo, "Text3", 0, 1), QStringList{"001"});
    EXPECT_EQ(w<QLabel>(prazo, "Label2")->text(), NomeBanco(s, "001"));
    digita("Text3(1)", "Maringá");
    digita("Text3(2)", "Construtora São Jorge");
    ASSERT_EQ(foco(), "Command3D1(0)");
    EXPECT_TRUE(respostas.Vistas.isEmpty()) << respostas.Vistas.join('|').toStdString();

    imp.LimpaChamadas();
    const int antes = imp.UltimoPapel();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(respostas.Vistas.value(i),
                  QStringLiteral("Impressão do Cheque: Insira o Documento.\n\nParcela %1 de 3 — "
                                 "cheque 00050%2 — R$ %3")
                      .arg(i + 1)
                      .arg(i + 1)
                      .arg(i == 0 ? "333,34" : "333,33"));
    const QStringList chamadas = imp.Chamadas();
    ASSERT_EQ(chamadas.size(), 9);
    EXPECT_EQ(chamadas[1], "ImprimeCheque(001|333,34|" + ConverteTexto("Construtora São Jorge") +
                               "|" + ConverteTexto("Maringá") + "|10/01/27|333,34)");

    // Each face with its own amount in figures and words, and its own date.
    ASSERT_EQ(imp.UltimoPapel(), antes + 3);
    for (int i = 0; i < 3; ++i)
        teste::confere_referencia(teste::le_utf8(imp.ArquivoPapel(antes + 1 + i)),
                                  QStringLiteral("prazo/parcela_%1.txt").arg(i + 1));

    QStringList linhas;
    for (const auto &l : teste::linhas_do_log(s, desktop))
        linhas << QStringList{l["Index"], l["Codigo"], l["Banco"], l["V_CH"],
                              l["Favor"], l["Local"],  l["Data"],  l["NRCH"]}
                      .join('|');
    EXPECT_EQ(linhas, QStringList({"0000000001|00001|001|333,34|Construtora São Jorge|Maringá|"
                                   "10/01/27|000501",
                                   "0000000002|00002|001|333,33|Construtora São Jorge|Maringá|"
                                   "09/02/27|000502",
                                   "0000000003|00003|001|333,33|Construtora São Jorge|Maringá|"
                                   "11/03/27|000503"}));
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

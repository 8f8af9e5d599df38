// The post-dated cheques' window, opened from the entry screen: a schedule of three
// instalments typed key by key, printed on the simulator, and registered.
#include "apoio/janelas.h"
#include "apoio/referencia.h"
#include "apoio/registro_log.h"
#include "cheque/main.h"
#include "core/conversoes.h"
#include "core/ini.h"
#include "printer/simulador.h"
#include "store/pasta_dados.h"
#include "store/tabelas.h"
#include "ui/desktop_qt.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

using namespace vexa;
using teste::foco;

namespace {

class JanelaPrazo : public ::testing::Test {
  protected:
    void SetUp() override {
        prepara_pasta_dados(s);
        LeGravaIni(s.CaminhoIni, "Config", "FirstTime", "*%*");
        s.Impressora = std::make_unique<Simulador>(s.CaminhoApp);
        Tela *main = desktop.Abre(std::make_unique<Main>(s, desktop, QString()));
        ASSERT_NE(main, nullptr);
        principal = desktop.Janela(*main);
        ASSERT_TRUE(QTest::qWaitForWindowActive(principal));
    }
    void TearDown() override {
        for (const QString &nome : {telas::ChePrz, telas::Main})
            if (Tela *t = desktop.Aberta(nome)) desktop.Fecha(*t);
    }
    // Types into the field with the focus and presses Enter; the focus must be on `campo`.
    void digita(const QString &campo, const QString &texto) {
        ASSERT_EQ(foco(), campo);
        QWidget *w = QApplication::focusWidget();
        // Key by key; an accented letter is a key that carries its text.
        for (const QChar c : texto)
            if (c.unicode() < 128)
                QTest::keyClick(w, c.toLatin1());
            else
                QTest::sendKeyEvent(QTest::Click, w, Qt::Key_unknown, QString(c), Qt::NoModifier);
        QTest::keyClick(w, Qt::Key_Return);
    }
    QString texto(const QString &nome) { return prazo->findChild<QLineEdit *>(nome)->text(); }
    QStringList textos(const QString &nome, int de, int n) {
        QStringList r;
        for (int i = de; i < de + n; ++i)
            r << texto(QStringLiteral("%1(%2)").arg(nome).arg(i));
        return r;
    }

    QTemporaryDir pasta;
    Sessao s{pasta.path()};
    ui::DesktopQt desktop;
    QMainWindow *principal = nullptr;
    QMainWindow *prazo = nullptr;
    teste::Respondedor respostas;
};

TEST_F(JanelaPrazo, TresParcelasDigitadasSaemNoPapelENoLog) {
    auto &imp = static_cast<Simulador &>(*s.Impressora);
    auto *relatorio = principal->findChild<QCheckBox *>("CheckBox");
    if (!relatorio->isChecked()) QTest::mouseClick(relatorio, Qt::LeftButton);
    ASSERT_TRUE(relatorio->isChecked());

    // The command opens the screen without holding the entry screen.
    QTest::mouseClick(principal->findChild<QPushButton *>("Opcoes(5)"), Qt::LeftButton);
    Tela *tela = desktop.Aberta(telas::ChePrz);
    ASSERT_NE(tela, nullptr);
    prazo = desktop.Janela(*tela);
    ASSERT_TRUE(QTest::qWaitForWindowActive(prazo));
    EXPECT_EQ(prazo->windowTitle(), "Impressão de Cheques a Prazo");
    EXPECT_NE(desktop.Aberta(telas::Main), nullptr);

    digita("Text1(0)", "1000");
    digita("DataPre", "100127");
    digita("prazo", "30");
    digita("parcelas", "3");
    EXPECT_EQ(texto("Text1(0)"), "1.000,00");
    EXPECT_EQ(texto("DataPre"), "10/01/27");
    EXPECT_EQ(textos("Text1", 1, 4), QStringList({"00", "30", "60", ""}));
    EXPECT_EQ(foco(), "Text1(13)");
    EXPECT_EQ(textos("Text1", 13, 4), QStringList({"10/01/27", "09/02/27", "11/03/27", ""}));
    EXPECT_EQ(textos("Text2", 0, 4), QStringList({"333,34", "333,33", "333,33", ""}));

    // The first cheque's number numbers the others.
    QTest::mouseClick(prazo->findChild<QLineEdit *>("Text4(0)"), Qt::LeftButton);
    digita("Text4(0)", "000501");
    EXPECT_EQ(textos("Text4", 0, 4), QStringList({"000501", "000502", "000503", ""}));
    digita("Text3(0)", "1");
    EXPECT_EQ(texto("Text3(0)"), "001");
    EXPECT_EQ(prazo->findChild<QLabel *>("Label2")->text(), NomeBanco(s, "001"));
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
    EXPECT_EQ(
        linhas,
        QStringList({"0000000001|00001|001|333,34|Construtora São Jorge|Maringá|10/01/27|000501",
                     "0000000002|00002|001|333,33|Construtora São Jorge|Maringá|09/02/27|000502",
                     "0000000003|00003|001|333,33|Construtora São "
                     "Jorge|Maringá|11/03/27|000503"}));
}

} // namespace

// The copy screens on their real widgets: what only the toolkit's side can get wrong — the
// page box's cursor and lines, the combo's choice, the arrows on the sheet, the bindings.
#include "copy/ajustescript.h"
#include "copy/cmpcopia.h"
#include "copy/script.h"
#include "registers/registros_apoio.h"
#include "ui/binder.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace vexa::ui {
void CriaVistaScript(Tela &tela, QMainWindow &janela);
void CriaVistaAjusteScript(Tela &tela, QMainWindow &janela);
void CriaVistaCmpCopia(Tela &tela, QMainWindow &janela);
} // namespace vexa::ui

using namespace vexa;

namespace {

using Fabrica = void (*)(Tela &, QMainWindow &);

class VistaCopia : public teste::Registros {
  protected:
    void TearDown() override {
        janelas.clear();
        Registros::TearDown();
    }
    QMainWindow &mostra(Tela &tela, Fabrica fabrica) {
        auto janela = std::make_unique<QMainWindow>();
        QMainWindow &j = *janela;
        fabrica(tela, j);
        new ui::Binder(tela, &j);
        j.show();
        j.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&j));
        janelas.push_back(std::move(janela));
        return j;
    }
    template <class W> static W *w(QWidget &j, const QString &nome) {
        return j.findChild<W *>(nome);
    }
    // Every control of the model has its widget, once.
    static void confere_ligacoes(Tela &tela, QWidget &j) {
        for (const auto &[ref, c] : tela.controles())
            EXPECT_EQ(j.findChildren<QObject *>(ref.texto()).size(), 1)
                << tela.Nome.toStdString() << " " << ref.texto().toStdString();
    }
    void grava_layout(const QString &codigo, const QString &nome) {
        ASSERT_NE(AbreTabelas(s, d, 0, 0, 0, 0), -2);
        RecordSet rs;
        ASSERT_TRUE(rs.Abre(s.Banco->db(), "Select * From Script"));
        const QStringList valores = {codigo, nome, "2", "5", "6", "1",  "2", "8",  "10", "14", "60",
                                     "5",    "5",  "2", "2", "5", "30", "5", "52", "56", "68"};
        rs.AddNew();
        for (int i = 0; i < CamposScript().size(); ++i)
            rs.Define(CamposScript()[i], valores[i]);
        ASSERT_TRUE(rs.Update());
    }

    std::vector<std::unique_ptr<QMainWindow>> janelas;
};

TEST_F(VistaCopia, EveryControlIsBound) {
    auto &script = abre<Script>();
    confere_ligacoes(script, mostra(script, ui::CriaVistaScript));
    script.Clica("Command3D2");
    auto *ajuste = d.Tela_<AjusteScript>("AjusteScript");
    ASSERT_NE(ajuste, nullptr);
    confere_ligacoes(*ajuste, mostra(*ajuste, ui::CriaVistaAjusteScript));
    Tela *copia = d.Abre(std::make_unique<CmpCopia>(s, d, ChequeCopia()));
    ASSERT_NE(copia, nullptr);
    confere_ligacoes(*copia, mostra(*copia, ui::CriaVistaCmpCopia));
}

TEST_F(VistaCopia, ScriptEnterWalksTheFieldsByIndex) {
    auto &t = abre<Script>();
    QMainWindow &j = mostra(t, ui::CriaVistaScript);
    QTest::mouseClick(w<QPushButton>(j, "Command3D1(0)"), Qt::LeftButton);
    auto *codigo = w<QLineEdit>(j, "Text1(0)");
    ASSERT_TRUE(codigo->hasFocus());
    QTest::keyClicks(codigo, "7");
    QTest::keyClick(codigo, Qt::Key_Return);
    EXPECT_EQ(codigo->text(), "007");
    // The line of the comment is followed by the amount's column, not by its own column.
    auto *linhaComentario = w<QLineEdit>(j, "Text1(9)");
    linhaComentario->setFocus();
    QTest::keyClick(linhaComentario, Qt::Key_Return);
    EXPECT_TRUE(w<QLineEdit>(j, "Text1(10)")->hasFocus());
}

TEST_F(VistaCopia, AjusteArrowsMoveTheBoxOnTheSheet) {
    auto &script = abre<Script>();
    for (int i = 2; i <= 20; ++i)
        script.Text1[i].Text = "10";
    script.Text1[8].Text = "12";
    script.Clica("Command3D2");
    auto *a = d.Tela_<AjusteScript>("AjusteScript");
    ASSERT_NE(a, nullptr);
    QMainWindow &j = mostra(*a, ui::CriaVistaAjusteScript);
    QTest::qWait(0);
    EXPECT_EQ(w<QLabel>(j, "Label3")->text(), "80 X 20");
    auto *cidade = w<QWidget>(j, "Text1(4)");
    auto *dia = w<QWidget>(j, "Text1(5)");
    QTest::mouseClick(cidade, Qt::LeftButton);
    ASSERT_TRUE(cidade->hasFocus());
    QTest::keyClick(cidade, Qt::Key_Down);
    EXPECT_EQ(w<QLabel>(j, "Label2(4)")->text(), "013");
    EXPECT_EQ(dia->y(), cidade->y());
    EXPECT_TRUE(cidade->hasFocus());
}

TEST_F(VistaCopia, CopiaShowsTheCursorAndBlocksALongLine) {
    grava_layout("001", "Padrao");
    grava_layout("002", "Segundo");
    ChequeCopia c;
    c.Banco = "237";
    c.NomeBanco = "BRADESCO";
    c.Valor = "10,00";
    c.Data = "05/02/99";
    Tela *t = d.Abre(std::make_unique<CmpCopia>(s, d, c));
    ASSERT_NE(t, nullptr);
    QMainWindow &j = mostra(*t, ui::CriaVistaCmpCopia);
    auto *combo = w<QComboBox>(j, "Combo1");
    ASSERT_EQ(combo->count(), 2);
    QTest::keyClick(combo, Qt::Key_Down);
    auto *pagina = w<QPlainTextEdit>(j, "CopiaTxt");
    EXPECT_TRUE(pagina->toPlainText().startsWith("  237-BRADESCO\n"));

    pagina->setFocus();
    QTextCursor cursor = pagina->textCursor();
    cursor.movePosition(QTextCursor::Start);
    cursor.movePosition(QTextCursor::Down);
    cursor.movePosition(QTextCursor::Right, QTextCursor::MoveAnchor, 4);
    pagina->setTextCursor(cursor);
    QTest::qWait(0);
    EXPECT_EQ(j.windowTitle(), "Cópia do Cheque [02-005]");

    auto *enviar = w<QPushButton>(j, "BtnCmd(0)");
    EXPECT_TRUE(enviar->isEnabled());
    QTest::keyClicks(pagina, QString(81, u'x'));
    QTest::qWait(0);
    EXPECT_FALSE(enviar->isEnabled());
    EXPECT_TRUE(w<QLabel>(j, "Info")->isVisible());
    EXPECT_EQ(w<QLabel>(j, "Info")->text(), "\nLinha 2 Extrapola Tamanho Maximo!");
    EXPECT_EQ(j.windowTitle(), "Cópia do Cheque [02-086]");
}

} // namespace

// The transfer screens on their real widgets: keys and clicks through the binder.
#include "cheque/transf.h"
#include "core/ini.h"
#include "registers/ajustatransf.h"
#include "registers/banctrans.h"
#include "registers/registros_apoio.h"
#include "ui/binder.h"
#include "ui/vistas.h"

#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace vexa::ui {
void CriaVistaBancTrans(Tela &tela, QMainWindow &janela);
void CriaVistaAjustaChequeTransferencia(Tela &tela, QMainWindow &janela);
void CriaVistaChequeTransf(Tela &tela, QMainWindow &janela);
} // namespace vexa::ui

using namespace vexa;

namespace {

class VistaTransf : public teste::Registros {
  protected:
    void TearDown() override {
        janelas.clear();
        Registros::TearDown();
    }
    QMainWindow &mostra(Tela &tela, const ui::FabricaVista &vista) {
        auto janela = std::make_unique<QMainWindow>();
        QMainWindow &j = *janela;
        vista(tela, j);
        new ui::Binder(tela, &j);
        j.show();
        j.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&j));
        janelas.push_back(std::move(janela));
        return j;
    }
    // Every control of the model has its widget in the view.
    static void todos_ligados(Tela &tela, QMainWindow &j) {
        for (const auto &[ref, c] : tela.controles())
            EXPECT_NE(j.findChild<QObject *>(ref.texto()), nullptr) << ref.texto().toStdString();
    }
    template <class W> static W *w(QWidget &j, const QString &nome) {
        return j.findChild<W *>(nome);
    }
    std::vector<std::unique_ptr<QMainWindow>> janelas;
};

TEST_F(VistaTransf, ChequeEnterCompletaOBancoERecusaComFoco) {
    LeGravaIni(s.CaminhoIni, "ChequeTransf", "001",
               linha_transf(posicoes_padrao_transf(), "Banco do Brasil"));
    auto &t = abre<ChequeTransf>();
    QMainWindow &j = mostra(t, ui::CriaVistaChequeTransf);
    todos_ligados(t, j);
    auto *banco = w<QLineEdit>(j, "txtBanco");
    banco->setFocus();
    QTest::keyClicks(banco, "1");
    QTest::keyClick(banco, Qt::Key_Return);
    EXPECT_EQ(banco->text(), "001");
    auto *valor = w<QLineEdit>(j, "txtValor");
    ASSERT_TRUE(valor->hasFocus());
    QTest::keyClicks(valor, "50");
    QTest::keyClick(valor, Qt::Key_Return);
    EXPECT_EQ(valor->text(), "50,00");
    QTest::mouseClick(w<QPushButton>(j, "Opcoes(0)"), Qt::LeftButton);
    EXPECT_EQ(d.Textos(), QStringList({"O campo 'Nº/Nome Agência' não pode ser vazio."}));
    EXPECT_TRUE(w<QLineEdit>(j, "txtAgencia")->hasFocus());
}

TEST_F(VistaTransf, CadastroLigaOsDezesseisCampos) {
    auto &b = abre<BancTrans>();
    QMainWindow &j = mostra(b, ui::CriaVistaBancTrans);
    todos_ligados(b, j);
    // Enter from the last line goes on to the first column.
    auto *l7 = w<QLineEdit>(j, "Text1(8)");
    l7->setFocus();
    QTest::keyClick(l7, Qt::Key_Return);
    EXPECT_TRUE(w<QLineEdit>(j, "Text1(9)")->hasFocus());
}

TEST_F(VistaTransf, AjusteMostraQuatorzeRotulosEADataSegueACidade) {
    auto &b = abre<BancTrans>();
    b.Text1[0].Text = "001";
    b.Text1[1].Text = "Banco do Brasil";
    b.Clica("Command3D2");
    auto *a = d.Tela_<AjustaChequeTransferencia>("AjustaChequeTransferencia");
    ASSERT_NE(a, nullptr);
    QMainWindow &j = mostra(*a, ui::CriaVistaAjustaChequeTransferencia);
    QTest::qWait(0); // the view hooks its painting on the binder's mirror
    todos_ligados(*a, j);
    auto *cidade = w<QWidget>(j, "Text1(3)");
    auto *data = w<QWidget>(j, "Text1(4)");
    QTest::mouseClick(cidade, Qt::LeftButton);
    ASSERT_TRUE(cidade->hasFocus());
    EXPECT_TRUE(w<QLabel>(j, "Label2(10)")->autoFillBackground());
    QTest::keyClick(cidade, Qt::Key_Down);
    EXPECT_EQ(w<QLabel>(j, "Label2(3)")->text(), "013");
    EXPECT_EQ(w<QLabel>(j, "Label2(4)")->text(), "013");
    EXPECT_EQ(data->y(), cidade->y());
}

} // namespace

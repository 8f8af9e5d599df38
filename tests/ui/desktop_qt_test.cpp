// The real desktop: its message boxes in Portuguese, a box closed by its window, a modal
// screen, and the system's own buttons translated.
#include "catalogo/telas.h"
#include "core/sessao.h"
#include "registers/saida.h"
#include "ui/desktop_qt.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialogButtonBox>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>

using namespace vexa;

namespace {

// Runs `acao` on the message box once it is open, while MsgBox waits for it.
void com_caixa(const std::function<void(QMessageBox &)> &acao) {
    auto *timer = new QTimer;
    QObject::connect(timer, &QTimer::timeout, [timer, acao] {
        auto *caixa = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!caixa || !caixa->isVisible()) return;
        timer->stop();
        timer->deleteLater();
        acao(*caixa);
    });
    timer->start(5);
}

struct CasoCaixa {
    const char *nome;
    Botoes botoes;
    QStringList textos;
    QString clicado; // the button pressed; empty: the box is closed by its window
    Resposta resposta;
};

class CaixaDeMensagem : public ::testing::TestWithParam<CasoCaixa> {};

TEST_P(CaixaDeMensagem, BotoesEmPortuguesERespostaDoBotao) {
    const CasoCaixa &c = GetParam();
    ui::DesktopQt desktop;
    QStringList textos;
    com_caixa([&](QMessageBox &caixa) {
        QAbstractButton *clicar = nullptr;
        for (QAbstractButton *b : caixa.buttons()) {
            textos << b->text().remove('&');
            if (textos.last() == c.clicado) clicar = b;
        }
        if (clicar)
            QTest::mouseClick(clicar, Qt::LeftButton);
        else
            caixa.close();
    });
    EXPECT_EQ(desktop.MsgBox("Texto", c.botoes, "Título"), c.resposta);
    textos.sort();
    QStringList esperados = c.textos;
    esperados.sort();
    EXPECT_EQ(textos, esperados);
}

// Each button answers as itself; closing the window answers as the cancelling button (Abort
// where there is no Cancel).
INSTANTIATE_TEST_SUITE_P(
    Botoes, CaixaDeMensagem,
    ::testing::Values(
        CasoCaixa{"OK", Botoes::OK, {"OK"}, "OK", Resposta::OK},
        CasoCaixa{"OKCancelar", Botoes::OKCancel, {"OK", "Cancelar"}, "", Resposta::Cancel},
        CasoCaixa{"SimNao", Botoes::YesNo, {"Sim", "Não"}, "", Resposta::No},
        CasoCaixa{"SimNaoCancelar",
                  Botoes::YesNoCancel,
                  {"Sim", "Não", "Cancelar"},
                  "",
                  Resposta::Cancel},
        CasoCaixa{"Sim", Botoes::YesNoCancel, {"Sim", "Não", "Cancelar"}, "Sim", Resposta::Yes},
        CasoCaixa{"Nao", Botoes::YesNoCancel, {"Sim", "Não", "Cancelar"}, "Não", Resposta::No},
        CasoCaixa{"Cancelar",
                  Botoes::YesNoCancel,
                  {"Sim", "Não", "Cancelar"},
                  "Cancelar",
                  Resposta::Cancel},
        CasoCaixa{
            "RepetirCancelar", Botoes::RetryCancel, {"Repetir", "Cancelar"}, "", Resposta::Cancel},
        CasoCaixa{"AnularRepetirIgnorar",
                  Botoes::AbortRetryIgnore,
                  {"Anular", "Repetir", "Ignorar"},
                  "",
                  Resposta::Abort}),
    [](const auto &info) { return std::string(info.param.nome); });

// The print dialog opens modal through the desktop: the opener waits until it is closed.
TEST(DesktopModal, TelaModalEsperaSerFechada) {
    QTemporaryDir pasta;
    Sessao sessao(pasta.path());
    ui::DesktopQt desktop;
    QString modal;
    bool fechada = false;
    QTimer::singleShot(0, [&] {
        QWidget *w = QApplication::activeModalWidget();
        modal = w ? w->objectName() : QString();
        if (auto *sair = w ? w->findChild<QPushButton *>("Command2") : nullptr)
            QTest::mouseClick(sair, Qt::LeftButton);
    });
    Tela *aberta = abre_tela(sessao, desktop, telas::Saida, true, [&](Tela &t) {
        static_cast<Saida &>(t).SSPanel1.Caption = "Total = 3 Favorecidos ";
    });
    fechada = desktop.Aberta(telas::Saida) == nullptr;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(aberta, nullptr);
    EXPECT_EQ(modal, telas::Saida);
    EXPECT_TRUE(fechada);
}

// The system's dialogs use Qt's own buttons: they are in Portuguese as well.
TEST(TraducaoQt, BotoesPadraoEmPortugues) {
    QDialogButtonBox caixa(QDialogButtonBox::Save | QDialogButtonBox::Cancel);
    EXPECT_EQ(caixa.button(QDialogButtonBox::Cancel)->text().remove('&'), "Cancelar");
    EXPECT_EQ(caixa.button(QDialogButtonBox::Save)->text().remove('&'), "Salvar");
}

} // namespace

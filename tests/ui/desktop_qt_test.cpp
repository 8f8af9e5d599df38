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
    int clicado; // index of the button pressed; -1: the box is closed by its window
    Resposta resposta;
};

class CaixaDeMensagem : public ::testing::TestWithParam<CasoCaixa> {};

TEST_P(CaixaDeMensagem, BotoesEmPortuguesERespostaDoBotao) {
    const CasoCaixa &c = GetParam();
    ui::DesktopQt desktop;
    QStringList textos;
    com_caixa([&](QMessageBox &caixa) {
        QList<QAbstractButton *> botoes;
        for (QAbstractButton *b : caixa.buttons()) {
            botoes << b;
            textos << b->text().remove('&');
        }
        std::sort(botoes.begin(), botoes.end(),
                  [](QAbstractButton *a, QAbstractButton *b) { return a->x() < b->x(); });
        if (c.clicado < 0)
            caixa.close();
        else
            QTest::mouseClick(botoes[c.clicado], Qt::LeftButton);
    });
    EXPECT_EQ(desktop.MsgBox("Texto", c.botoes, "Título"), c.resposta);
    textos.sort();
    QStringList esperados = c.textos;
    esperados.sort();
    EXPECT_EQ(textos, esperados);
}

INSTANTIATE_TEST_SUITE_P(
    Botoes, CaixaDeMensagem,
    ::testing::Values(
        CasoCaixa{"OK", Botoes::OK, {"OK"}, 0, Resposta::OK},
        CasoCaixa{"OKCancelar", Botoes::OKCancel, {"OK", "Cancelar"}, -1, Resposta::Cancel},
        CasoCaixa{"SimNao", Botoes::YesNo, {"Sim", "Não"}, -1, Resposta::No},
        CasoCaixa{"SimNaoCancelar",
                  Botoes::YesNoCancel,
                  {"Sim", "Não", "Cancelar"},
                  -1,
                  Resposta::Cancel},
        CasoCaixa{
            "RepetirCancelar", Botoes::RetryCancel, {"Repetir", "Cancelar"}, -1, Resposta::Cancel},
        // Abort is the box's cancelling button.
        CasoCaixa{"AnularRepetirIgnorar",
                  Botoes::AbortRetryIgnore,
                  {"Anular", "Repetir", "Ignorar"},
                  -1,
                  Resposta::Abort}),
    [](const auto &info) { return std::string(info.param.nome); });

// Each button answers as itself.
TEST(CaixaDeMensagemClique, CadaBotaoDaSuaResposta) {
    ui::DesktopQt desktop;
    const QList<QPair<QString, Resposta>> casos = {
        {"Sim", Resposta::Yes}, {"Não", Resposta::No}, {"Cancelar", Resposta::Cancel}};
    for (const auto &[texto, resposta] : casos) {
        com_caixa([texto](QMessageBox &caixa) {
            for (QAbstractButton *b : caixa.buttons())
                if (b->text().remove('&') == texto) QTest::mouseClick(b, Qt::LeftButton);
        });
        EXPECT_EQ(desktop.MsgBox("Pergunta", Botoes::YesNoCancel), resposta) << texto.toStdString();
    }
}

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

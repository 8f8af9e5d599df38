// The catalogue of screens: every screen the program knows has a view and a help page, and every
// control of every model is bound to a widget of that view, inside the frame the model puts it
// in.
#include "catalogo/telas.h"
#include "core/ajuda.h"
#include "core/desktop_roteiro.h"
#include "ui/binder.h"
#include "ui/vistas.h"

#include <QFile>
#include <QMainWindow>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace vexa;

namespace {

std::vector<std::string> nomes(const auto &tabela) {
    std::vector<std::string> n;
    for (const auto &[nome, fabrica] : tabela)
        n.push_back(nome.toStdString());
    return n;
}

TEST(RegistroTelas, CadaTelaTemSuaVistaECadaVistaSuaTela) {
    EXPECT_EQ(nomes(fabricas_telas()), nomes(ui::fabricas_vistas()));
    for (const auto &[nome, fabrica] : fabricas_telas())
        EXPECT_TRUE(ui::vista_de(nome)) << nome.toStdString();
    EXPECT_FALSE(ui::vista_de("Relatorio"));
    EXPECT_FALSE(tela_existe("Relatorio"));
}

class VistaDaTela : public ::testing::TestWithParam<std::string> {
  protected:
    QTemporaryDir pasta;
    Sessao sessao{pasta.path()};
    DesktopRoteiro desktop;
};

TEST_P(VistaDaTela, TodoControleLigadoAUmWidgetDentroDoSeuQuadro) {
    const QString nome = QString::fromStdString(GetParam());
    std::unique_ptr<Tela> tela = cria_tela(nome, sessao, desktop);
    ASSERT_NE(tela, nullptr);
    EXPECT_EQ(tela->Nome, nome);
    QMainWindow janela;
    ui::vista_de(nome)(*tela, janela);
    auto *binder = new ui::Binder(*tela, &janela);
    QStringList soltos;
    for (const auto &[ref, c] : tela->controles()) {
        // A timer has no widget: the binder runs it.
        if (c->Tipo == TipoControle::Temporizador) continue;
        QObject *objeto = binder->objeto(ref);
        if (!objeto) {
            soltos << ref.texto();
            continue;
        }
        EXPECT_EQ(janela.findChildren<QObject *>(ref.texto()).size(), 1)
            << ref.texto().toStdString() << " repetido";
        if (!c->Container) continue;
        QWidget *quadro = binder->widget(tela->ref(*c->Container));
        QWidget *widget = binder->widget(ref);
        EXPECT_TRUE(quadro && widget && quadro->isAncestorOf(widget))
            << ref.texto().toStdString() << " fora do seu quadro";
    }
    EXPECT_EQ(soltos, QStringList());
    tela->aoMudar = nullptr;

    // F1 finds its page, and the place on it.
    const QString topico = topico_ajuda(nome);
    QFile pagina(":/ajuda/" + topico.section('#', 0, 0).toLower() + ".html");
    ASSERT_TRUE(pagina.open(QIODevice::ReadOnly)) << topico.toStdString();
    if (topico.contains('#')) {
        EXPECT_TRUE(pagina.readAll().contains("name=\"" + topico.section('#', 1).toUtf8() + '"'))
            << topico.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Telas, VistaDaTela, ::testing::ValuesIn(nomes(fabricas_telas())),
                         [](const auto &info) { return info.param; });

} // namespace

#include "core/instancia.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLocalSocket>
#include <QTemporaryDir>
#include <atomic>
#include <gtest/gtest.h>
#include <thread>

using namespace vexa;

namespace {

TEST(Instancia, PedidoIdaEVoltaGuardaCadaCampo) {
    const QMap<int, QString> campos{{0, "001"}, {2, "D'Ávila & Cia"}, {6, "000123"}};
    QMap<int, QString> lidos;
    ASSERT_TRUE(Instancia::Decodifica(Instancia::Codifica(campos), lidos));
    EXPECT_EQ(lidos, campos);
    ASSERT_TRUE(Instancia::Decodifica(Instancia::Codifica({}), lidos));
    EXPECT_TRUE(lidos.isEmpty());
}

class PedidoMalFormado : public ::testing::TestWithParam<const char *> {};

TEST_P(PedidoMalFormado, EDescartado) {
    QMap<int, QString> lidos;
    EXPECT_FALSE(Instancia::Decodifica(QByteArray(GetParam()), lidos));
}

INSTANTIATE_TEST_SUITE_P(
    Variantes, PedidoMalFormado,
    ::testing::Values("", "FIM\n", "VEXA-PLUS/2\nFIM\n", "VEXA-PLUS/1\n",
                      "VEXA-PLUS/1\nText1(5)=MDAx\nFIM\n", // there is no field 5
                      "VEXA-PLUS/1\nText1(7)=MDAx\nFIM\n", "VEXA-PLUS/1\nText2(0)=MDAx\nFIM\n",
                      "VEXA-PLUS/1\nText1(0)=***\nFIM\n",
                      "VEXA-PLUS/1\nText1(0)=MDAx\nText1(0)=MDAx\nFIM\n",
                      "VEXA-PLUS/1\nText1(0)MDAx\nFIM\n", "lixo qualquer\nFIM\n"));

TEST(Instancia, SegundaCopiaEntregaOsCamposAPrimeira) {
    QTemporaryDir pasta;
    const QString link = Instancia::NomeLink(pasta.path());
    Instancia primeira(link);
    ASSERT_TRUE(primeira.Escuta());
    QList<QMap<int, QString>> recebidos;
    primeira.aoReceber = [&](const QMap<int, QString> &c) { recebidos.append(c); };

    std::atomic<int> entregues{0};
    std::atomic<bool> fim{false};
    std::thread segunda([&] {
        Instancia cliente(link);
        if (cliente.EntregaAoPrimeiro({{0, "237"}, {1, "1.234,50"}})) ++entregues;
        // Garbage on the link is dropped and the first copy goes on serving.
        QLocalSocket lixo;
        lixo.connectToServer(link);
        if (lixo.waitForConnected(2000)) {
            lixo.write("isto nao e um pedido\nFIM\n");
            lixo.waitForBytesWritten(2000);
            lixo.waitForDisconnected(2000);
        }
        if (cliente.EntregaAoPrimeiro({})) ++entregues;
        fim = true;
    });
    QElapsedTimer relogio;
    relogio.start();
    while (!fim && relogio.elapsed() < 10000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    segunda.join();

    EXPECT_EQ(entregues, 2);
    ASSERT_EQ(recebidos.size(), 2);
    EXPECT_EQ(recebidos[0], (QMap<int, QString>{{0, "237"}, {1, "1.234,50"}}));
    EXPECT_TRUE(recebidos[1].isEmpty());
}

TEST(Instancia, SemCopiaRodandoNinguemRecebe) {
    QTemporaryDir pasta;
    Instancia cliente(Instancia::NomeLink(pasta.path()));
    EXPECT_FALSE(cliente.EntregaAoPrimeiro({{0, "001"}}, 200));
}

} // namespace

// A program killed between the print of a cheque and its register: the next start asks about
// the cheque, and Sim gives it its row. The killed program is this very test executable, run
// again on one test that dies at that point.
#include "apoio/registro_log.h"
#include "cheque/main.h"
#include "core/desktop_roteiro.h"
#include "core/relogio.h"
#include "printer/simulador.h"
#include "store/pasta_dados.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <csignal>
#include <gtest/gtest.h>

using namespace vexa;

namespace {

const char *const PastaDoFilho = "VEXA_TESTE_PASTA_MORTE";

// A printer that prints the cheque, and then the process dies as in a power cut, before the
// program hears the result.
class ImpressoraQueMata : public Simulador {
  public:
    using Simulador::Simulador;
    qint16 ImprimeCheque(const QString &Banco, const QString &Valor, const QString &Favorecido,
                         const QString &Cidade, const QString &Data,
                         const QString &Extra) override {
        if (Simulador::ImprimeCheque(Banco, Valor, Favorecido, Cidade, Data, Extra) == 1)
            std::raise(SIGKILL);
        return 0;
    }
};

// The program that dies: run only by the test below, which names its data folder.
TEST(MorteEntreImpressaoERegistro, Filho) {
    const QString pasta = qEnvironmentVariable(PastaDoFilho);
    if (pasta.isEmpty()) GTEST_SKIP() << "run by MorteEntreImpressaoERegistro.PerguntaNaPartida";
    fixa_hoje(QDate(2026, 11, 23));
    Sessao s(pasta);
    s.Impressora = std::make_unique<ImpressoraQueMata>(s.CaminhoApp);
    DesktopRoteiro d;
    auto *m = static_cast<Main *>(d.Abre(std::make_unique<Main>(s, d, QString())));
    const QStringList textos{"001", "1.234,50", "Maria", "Santos", "20/11/26", "", "000123"};
    for (int i = 0; i < 7; ++i)
        if (i != 5) m->Text1[i].Text = textos[i];
    m->SetFocus("CheckBox");
    m->CheckBox.Value = 1;
    d.Respostas = {Resposta::OK};
    m->Clica("Opcoes", 0);
    FAIL() << "the program outlived the print";
}

TEST(MorteEntreImpressaoERegistro, PerguntaNaPartida) {
    fixa_hoje(QDate(2026, 11, 23));
    QTemporaryDir pasta;
    {
        Sessao s(pasta.path());
        prepara_pasta_dados(s);
    }
    QProcess filho;
    QProcessEnvironment ambiente = QProcessEnvironment::systemEnvironment();
    ambiente.insert(PastaDoFilho, pasta.path());
    filho.setProcessEnvironment(ambiente);
    filho.start(QCoreApplication::applicationFilePath(),
                {"--gtest_filter=MorteEntreImpressaoERegistro.Filho"});
    ASSERT_TRUE(filho.waitForFinished(120000));
    ASSERT_EQ(filho.exitStatus(), QProcess::CrashExit) << filho.readAll().toStdString();

    Sessao s(pasta.path());
    s.Impressora = std::make_unique<Simulador>(s.CaminhoApp);
    // The cheque is on paper.
    ASSERT_FALSE(QDir(static_cast<Simulador &>(*s.Impressora).PastaPapel())
                     .entryList({"*.txt"}, QDir::Files)
                     .isEmpty());
    DesktopRoteiro d;
    d.Respostas = {Resposta::Yes};
    d.Abre(std::make_unique<Main>(s, d, QString()));
    ASSERT_FALSE(d.Mensagens.isEmpty());
    EXPECT_TRUE(d.Mensagens[0].Texto.startsWith("O cheque nº 000123 de R$ 1.234,50 para Maria"));
    const auto linhas = teste::linhas_do_log(s, d);
    ASSERT_EQ(linhas.size(), 1);
    EXPECT_EQ(linhas[0].value("NRCH"), "000123");
    EXPECT_EQ(linhas[0].value("Favor"), "Maria");
    fixa_hoje(QDate());
}

} // namespace

#include "printer/impressao.h"
#include "printer/simulador.h"
#include "printer/simulador_apoio.h"
#include "store/bancos_padrao.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>

using namespace vexa;
using teste::resumo;

namespace {

QByteArray le(const QString &caminho) {
    QFile f(caminho);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

bool escreve(const QString &caminho, const QByteArray &bytes, QIODevice::OpenMode modo) {
    QFile f(caminho);
    return f.open(modo) && f.write(bytes) == bytes.size();
}

class MemoriaTeste : public ::testing::Test {
  protected:
    QString estado() const { return pasta.filePath("impressora/memoria.json"); }
    // The printer with a cheque printed and a payee in its memory, the port open.
    Simulador &preparada() {
        imp = std::make_unique<Simulador>(pasta.path());
        imp->IniciaPorta("COM2");
        EXPECT_EQ(imp->ImprimeCheque("001", "5,00", "Ana", "Santos", "01/01/24", ""), 1);
        EXPECT_EQ(imp->IncluiFavorecido("01", "Ana"), 1);
        return *imp;
    }

    QTemporaryDir pasta;
    std::unique_ptr<Simulador> imp;
};

class MemoriaMudancas : public MemoriaTeste,
                        public ::testing::WithParamInterface<teste::OperacaoMemoria> {};

INSTANTIATE_TEST_SUITE_P(Operacoes, MemoriaMudancas,
                         ::testing::ValuesIn(teste::operacoes_memoria()),
                         [](const auto &info) { return std::string(info.param.nome); });

// A change is one line added at the end of the journal; the state written at the start is
// never rewritten, and a restart reads the same memory back.
TEST_P(MemoriaMudancas, AcrescentaUmaLinhaAoDiarioSemReescreverOEstado) {
    Simulador &s = preparada();
    const QByteArray estadoAntes = le(estado());
    const QByteArray diarioAntes = le(s.Memoria().ArquivoDiario());
    const QString lembradoAntes = resumo(s);

    ASSERT_EQ(GetParam().faz(s), Simulador::Feito);
    const QByteArray diario = le(s.Memoria().ArquivoDiario());
    EXPECT_EQ(le(estado()), estadoAntes);
    EXPECT_TRUE(diario.startsWith(diarioAntes));
    EXPECT_EQ(diario.count('\n'), diarioAntes.count('\n') + 1);
    EXPECT_TRUE(diario.endsWith('\n'));
    EXPECT_NE(resumo(s), lembradoAntes);
    EXPECT_EQ(resumo(Simulador(pasta.path())), resumo(s));
}

// A change that a crash cut short is dropped at the next start, and the journal goes back to
// its last whole line, so that the change after it is read too.
TEST_F(MemoriaTeste, LinhaCortadaPorQuedaSaiDoDiario) {
    Simulador &s = preparada();
    const QString diario = s.Memoria().ArquivoDiario();
    const QString lembrado = resumo(s);
    const QByteArray inteiro = le(diario);
    imp.reset();
    ASSERT_TRUE(escreve(diario, R"({"codigo":"777","op":"banco","posic)", QIODevice::Append));

    Simulador depois(pasta.path());
    EXPECT_EQ(resumo(depois), lembrado);
    EXPECT_EQ(le(diario), inteiro);
    depois.IniciaPorta("COM2");
    ASSERT_EQ(depois.IncluiBanco("777", teste::LayoutTeste), Simulador::Feito);
    EXPECT_EQ(Simulador(pasta.path()).Bancos().value("777"), teste::LayoutTeste);
}

// A journal much larger than the state is folded into it at a start. A start that ended
// between writing the new state and dropping the old journal leaves that journal behind: it
// is already in the state and must not be read again.
TEST_F(MemoriaTeste, DiarioGrandeEntraNoEstadoNaPartidaUmaVezSo) {
    Simulador &s = preparada();
    ASSERT_EQ(s.IncluiBanco("777", teste::LayoutTeste), 1);
    const QString diario = s.Memoria().ArquivoDiario();
    const QByteArray linha = le(diario).split('\n').value(2) + '\n';
    ASSERT_TRUE(linha.contains("777"));
    ASSERT_TRUE(escreve(diario, linha.repeated(1500), QIODevice::Append));
    const QString lembrado = resumo(s);
    const QByteArray diarioGrande = le(diario);
    imp.reset();

    Simulador compactada(pasta.path());
    EXPECT_EQ(resumo(compactada), lembrado);
    EXPECT_FALSE(QFileInfo::exists(diario));
    EXPECT_NE(compactada.Memoria().ArquivoDiario(), diario);
    EXPECT_LT(QFileInfo(estado()).size(), diarioGrande.size() / 2);

    ASSERT_TRUE(escreve(diario, diarioGrande, QIODevice::WriteOnly));
    Simulador depois(pasta.path());
    EXPECT_EQ(resumo(depois), lembrado);
    EXPECT_EQ(depois.Relatorio().size(), 1);
    EXPECT_FALSE(QFileInfo::exists(diario));
}

// A memory that can't be kept, in a folder under a regular file (where not even root writes),
// or unreadable with its place aside taken: the printer starts from the factory, answers
// MemoriaFalhou to whatever would change its memory or put a sheet on paper, and leaves what
// is there as it was.
TEST(MemoriaSemEscrita, ComecaDeFabricaERespondeAFalha) {
    QTemporaryDir pasta;
    escreve(pasta.path() + "/arquivo", "x", QIODevice::WriteOnly);
    QDir().mkpath(pasta.path() + "/impressora/memoria.json.ilegivel/cheia");
    escreve(pasta.path() + "/impressora/memoria.json", "{ bancos: quebrado", QIODevice::WriteOnly);
    for (const QString &caminho : {pasta.path() + "/arquivo/dados", pasta.path()}) {
        const QByteArray memoria = le(caminho + "/impressora/memoria.json");
        Simulador imp(caminho);
        EXPECT_FALSE(imp.Memoria().Gravavel()) << caminho.toStdString();
        EXPECT_EQ(imp.Bancos().size(), bancos_padrao().size());
        EXPECT_EQ(imp.IniciaPorta("COM2"), Simulador::Feito);
        EXPECT_EQ(imp.ImprimeCheque("001", "1,00", "Ana", "Santos", "01/01/24", ""),
                  Simulador::MemoriaFalhou);
        EXPECT_EQ(imp.TolvaneTX("Lista\r\n"), Simulador::MemoriaFalhou);
        EXPECT_EQ(imp.IncluiBanco("999", teste::LayoutTeste), Simulador::MemoriaFalhou);
        EXPECT_EQ(imp.CancelaRel("*"), Simulador::MemoriaFalhou);
        EXPECT_EQ(imp.UltimoPapel(), 0);
        EXPECT_EQ(le(caminho + "/impressora/memoria.json"), memoria);
        EXPECT_TRUE(QDir(caminho + "/impressora/papel").isEmpty());
    }
}

} // namespace

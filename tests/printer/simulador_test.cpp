#include "apoio/referencia.h"
#include "core/conversoes.h"
#include "core/ini.h"
#include "core/relogio.h"
#include "printer/impressao.h"
#include "printer/simulador.h"
#include "store/bancos_padrao.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace vexa;
using teste::confere_referencia;
using teste::le_utf8;

namespace {

class SimuladorTeste : public ::testing::Test {
  protected:
    void SetUp() override { fixa_hoje(QDate(2024, 6, 1)); }
    void TearDown() override { fixa_hoje(QDate()); }

    qint16 cheque(Simulador &imp, const QString &banco = "001", const QString &data = "05/03/99") {
        imp.IniciaPorta("COM2");
        const qint16 r = imp.ImprimeCheque(banco, "1.234,50", "Maria", "Santos", data, "");
        imp.FechaPorta();
        return r;
    }

    QTemporaryDir pasta;
};

TEST_F(SimuladorTeste, FaceDoChequeNoLayoutPadrao) {
    Simulador imp(pasta.path());
    ASSERT_EQ(cheque(imp), Simulador::Feito);
    EXPECT_EQ(imp.UltimoPapel(), 1);
    confere_referencia(le_utf8(imp.ArquivoPapel(1)), "papel/cheque_001.txt");
    // The PDF beside it carries the same face.
    QProcess pdf;
    pdf.start("pdftotext", {"-layout", imp.PastaPapel() + "/000001.pdf", "-"});
    ASSERT_TRUE(pdf.waitForFinished(20000));
    const QString texto = QString::fromUtf8(pdf.readAllStandardOutput()).simplified();
    for (const char *campo : {"#1.234,50#", "Mil, Duzentos e Trinta e Quatro Reais e Cinquenta",
                              "Maria", "Santos 05 Março 1999"})
        EXPECT_TRUE(texto.contains(QString::fromUtf8(campo)))
            << campo << " in " << texto.toStdString();
    // One font, embedded once.
    QProcess fontes;
    fontes.start("pdffonts", {imp.PastaPapel() + "/000001.pdf"});
    ASSERT_TRUE(fontes.waitForFinished(20000));
    const QStringList linhas =
        QString::fromUtf8(fontes.readAllStandardOutput()).trimmed().split('\n').mid(2);
    ASSERT_EQ(linhas.size(), 1) << linhas.join('\n').toStdString();
    EXPECT_EQ(linhas[0].split(' ', Qt::SkipEmptyParts).value(4), "yes") << linhas[0].toStdString();
}

TEST_F(SimuladorTeste, FaceComExtensoEmDuasLinhasAcentosECamposExtras) {
    Simulador imp(pasta.path());
    imp.IniciaPorta("COM2");
    imp.IncluiBanco("237", "003,006,008,011,015,085,017,009,011,030,040,050,075");
    imp.ComandoTX(comando_formato_data(2), 5);
    imp.FechaPorta();
    // Extra fields arrive unconverted: the printer reads "é" (E9) as its own "Ú".
    imp.ImprimeCampoX(1, 20, 1, "Pagar até 10/01");
    imp.ImprimeCampoX(2, 18, 60, "Ref. 123");
    imp.IniciaPorta("COM2");
    ASSERT_EQ(imp.ImprimeCheque("237", "9.999.999.999,99", ConverteTexto("São João"),
                                ConverteTexto("Conceição do Araguaia"), "31/12/26", "9.999"),
              Simulador::Feito);
    confere_referencia(le_utf8(imp.ArquivoPapel(imp.UltimoPapel())), "papel/cheque_237.txt");

    // The extra fields went with that cheque only.
    ASSERT_EQ(imp.ImprimeCheque("237", "1,00", " ", " ", "01/01/25", ""), Simulador::Feito);
    EXPECT_FALSE(le_utf8(imp.ArquivoPapel(imp.UltimoPapel())).contains("Ref. 123"));
}

TEST_F(SimuladorTeste, AnoComOsDigitosDoUltimoComandoLembradoAposReinicio) {
    for (const auto &[digitos, ano] :
         {std::pair{1, QString("9")}, {2, QString("99")}, {4, QString("1999")}}) {
        {
            Simulador imp(pasta.path());
            imp.IniciaPorta("COM2");
            ASSERT_EQ(imp.ComandoTX(comando_formato_data(digitos), 5), Simulador::Feito);
            imp.FechaPorta();
        }
        Simulador imp(pasta.path());
        EXPECT_EQ(imp.DigitosAno(), digitos);
        cheque(imp);
        const QString linha = le_utf8(imp.ArquivoPapel(imp.UltimoPapel())).split('\n')[12];
        EXPECT_EQ(linha.mid(114), ano) << digitos;
    }
}

// From the factory: the preset banks on the standard layout, the real, the port COM2; what
// it is told after is remembered across a restart.
TEST_F(SimuladorTeste, SaiDeFabricaELembraOQueOuviu) {
    {
        Simulador imp(pasta.path());
        ASSERT_FALSE(bancos_padrao().isEmpty());
        EXPECT_EQ(imp.Bancos().size(), bancos_padrao().size());
        for (const auto &b : bancos_padrao())
            EXPECT_EQ(imp.Bancos().value(b.first),
                      "001,005,007,010,013,092,017,009,011,050,031,040,065");
        EXPECT_EQ(imp.MoedaSingular(), "Real");
        EXPECT_EQ(imp.Porta(), "COM2");
        imp.IniciaPorta("COM2");
        EXPECT_EQ(imp.AlteraMoeda(ConverteTexto("Dólar"), ConverteTexto("Dólares")), 1);
        imp.FechaPorta();
        imp.DefinePorta("COM4");
    }
    Simulador imp(pasta.path());
    EXPECT_EQ(imp.Descricao(), "Impressora simulada (COM4)");
    EXPECT_EQ(imp.IniciaPorta("COM2"), 0);
    EXPECT_EQ(imp.IniciaPorta("com4"), 1);
    ASSERT_EQ(imp.ImprimeCheque("001", "1,00", "A", "B", "01/01/24", ""), 1);
    EXPECT_TRUE(le_utf8(imp.ArquivoPapel(1)).contains("Um Dólar"));
}

// An unreadable memory is set aside, and the printer starts from the factory and prints.
TEST_F(SimuladorTeste, MemoriaIlegivelFicaDeLadoEVoltaDeFabrica) {
    QDir().mkpath(pasta.filePath("impressora"));
    QFile memoria(pasta.filePath("impressora/memoria.json"));
    ASSERT_TRUE(memoria.open(QIODevice::WriteOnly) && memoria.write("{ bancos: quebrado") > 0);
    memoria.close();
    Simulador imp(pasta.path());
    EXPECT_EQ(imp.Bancos().size(), bancos_padrao().size());
    EXPECT_TRUE(QFileInfo::exists(pasta.filePath("impressora/memoria.json.ilegivel")));
    EXPECT_EQ(cheque(imp), Simulador::Feito);
}

TEST_F(SimuladorTeste, CancelaRelUltimoETodos) {
    Simulador imp(pasta.path());
    for (int i = 0; i < 3; ++i)
        cheque(imp);
    const auto cancelados = [&] {
        QString s;
        for (const auto &i : Simulador(pasta.path()).Relatorio())
            s += i.Cancelado ? "C" : "-";
        return s;
    };
    imp.IniciaPorta("COM2");
    imp.CancelaRel("u");
    EXPECT_EQ(cancelados(), "--C");
    imp.CancelaRel("u");
    EXPECT_EQ(cancelados(), "-CC");
    EXPECT_EQ(imp.CancelaRel("x"), Simulador::ArgumentoInvalido);
    imp.CancelaRel("*");
    EXPECT_EQ(cancelados(), "CCC");
}

qint16 ch(Simulador &s, const char *banco, const char *valor, const char *data = "01/01/24") {
    return s.ImprimeCheque(banco, valor, "A", "B", data, "");
}

// Each refusal answers its code, puts nothing on paper and is the call's result in the record.
TEST_F(SimuladorTeste, RecusasRespondemOCodigoENaoImprimem) {
    Simulador imp(pasta.path());
    const auto confere = [&](qint16 resposta, qint16 codigo, const char *caso) {
        EXPECT_EQ(resposta, codigo) << caso;
        EXPECT_EQ(imp.Registro().last().Resultado, codigo) << caso;
        EXPECT_EQ(imp.UltimoPapel(), 0) << caso;
    };
    imp.IniciaPorta("COM2");
    confere(ch(imp, "777", "1"), Simulador::BancoSemLayout, "banco sem layout");
    confere(ch(imp, "001", "abc"), Simulador::ArgumentoInvalido, "valor");
    confere(ch(imp, "001", "1", "31/02/24"), Simulador::ArgumentoInvalido, "data");
    confere(imp.IncluiBanco("1", "1,2,3,4,5,6,7,8,9,10,11,12"), Simulador::ArgumentoInvalido,
            "layout de 12 valores");
    confere(imp.ComandoTX(comando_formato_data(3), 5), Simulador::ArgumentoInvalido,
            "ano de 3 dígitos");
    imp.DefinePapel(false);
    confere(ch(imp, "001", "1"), Simulador::SemPapel, "sem papel");
    imp.DefinePapel(true);
    imp.Falha("ImprimeCheque", -7);
    confere(ch(imp, "001", "1"), -7, "código imposto");
    imp.LimpaFalhas();
    imp.FechaPorta();
    confere(ch(imp, "001", "1"), Simulador::PortaFechada, "porta fechada");
}

TEST_F(SimuladorTeste, MontaValorGravaAsPalavrasEmAnsiComOZeroFinal) {
    Simulador imp(pasta.path());
    QString valor = "2000000,05";
    EXPECT_EQ(imp.MontaValor(valor, "real", "reais"), 0);
    EXPECT_EQ(valor, "2000000,05");
    QFile f(pasta.filePath("Extenso.ret"));
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    static const char esperado[] = "Dois Milh\xF5"
                                   "es de Reais e Cinco Centavos";
    EXPECT_EQ(f.readAll(), QByteArray(esperado, sizeof esperado)); // the zero byte included
    valor = "0,00";
    EXPECT_EQ(imp.MontaValor(valor, "real", "reais"), Simulador::ValoresErrados);
}

TEST_F(SimuladorTeste, ExcluiFavorecidoUmOuTodos) {
    Simulador imp(pasta.path());
    imp.IniciaPorta("COM2");
    for (const char *codigo : {"07", "08", "09"})
        imp.IncluiFavorecido(codigo, "Ana");
    EXPECT_EQ(imp.ExcluiFavorecido("08"), Simulador::Feito);
    EXPECT_EQ(imp.Favorecidos().keys(), QStringList({"07", "09"}));
    EXPECT_EQ(imp.ExcluiFavorecido("08"), Simulador::ArgumentoInvalido);
    // The option Todos sends "*".
    EXPECT_EQ(imp.ExcluiFavorecido("*"), Simulador::Feito);
    EXPECT_TRUE(Simulador(pasta.path()).Favorecidos().isEmpty());
}

TEST_F(SimuladorTeste, TextoTerminaNoCaractereZeroComoNaBiblioteca) {
    Simulador imp(pasta.path());
    imp.IniciaPorta("COM2");
    ASSERT_EQ(imp.ImprimeCheque("001", "1,00", QString("Maria") + QChar(0) + "lixo", "Santos",
                                "01/01/24", ""),
              Simulador::Feito);
    const QStringList face = le_utf8(imp.ArquivoPapel(1)).split('\n');
    EXPECT_EQ(face[9], "          Maria");
    imp.TravaDoc(1);
    imp.TolvaneTX(QString("Mil Reais") + QChar(0) + "\r\n");
    imp.TolvaneTX("fim\r\n");
    imp.TravaDoc(0);
    EXPECT_EQ(le_utf8(imp.ArquivoPapel(2)), "Mil Reaisfim\n");
}

// The operator edits simulador.ini while the program runs: the next opening of the port
// reads it.
struct CasoIni {
    const char *nome;
    const char *chave, *valor;
    qint16 abre, cheque;
    const char *descricao;
};

class SimuladorIni : public ::testing::TestWithParam<CasoIni> {};

INSTANTIATE_TEST_SUITE_P(
    Chaves, SimuladorIni,
    ::testing::Values(CasoIni{"PapelDesligado", "Papel", "0", 1, Simulador::SemPapel,
                              "Impressora simulada (COM2)"},
                      CasoIni{"PapelDeVolta", "Papel", "1", 1, Simulador::Feito,
                              "Impressora simulada (COM2)"},
                      CasoIni{"OutraPorta", "Porta", "COM5", 0, Simulador::PortaFechada,
                              "Impressora simulada (COM5)"}),
    [](const auto &info) { return std::string(info.param.nome); });

TEST_P(SimuladorIni, LidoAoAbrirAPorta) {
    const CasoIni &caso = GetParam();
    QTemporaryDir pasta;
    Simulador imp(pasta.path());
    imp.DefinePapel(std::string(caso.valor) != "1");
    LeGravaIni(pasta.filePath("impressora/simulador.ini"), "Simulador", caso.chave, caso.valor);
    EXPECT_EQ(imp.IniciaPorta("COM2"), caso.abre);
    EXPECT_EQ(imp.ImprimeCheque("001", "1,00", "Ana", "Santos", "01/01/24", ""), caso.cheque);
    EXPECT_EQ(imp.Descricao(), caso.descricao);
}

} // namespace

// The simulated printer's sheets of running text: what it reads in the texts it is sent,
// inverted printing and the printer's reset, one sheet per document, and the PDF beside each
// on the form it was printed on.
#include "apoio/referencia.h"
#include "cheque/transf.h"
#include "copy/cmpcopia.h"
#include "copy/script.h"
#include "core/conversoes.h"
#include "core/ini.h"
#include "printer/simulador.h"
#include "registers/banctrans.h"
#include "registers/registros_apoio.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>

using namespace vexa;
using teste::confere_referencia;
using teste::le_utf8;

namespace {

const QString EscI = QStringLiteral("\x1B") + "I";
const QString EscArroba = QStringLiteral("\x1B") + "@";

QByteArray le_bytes(const QString &caminho) {
    QFile f(caminho);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// A poppler tool's output on a sheet's PDF.
QString poppler(const QString &programa, const QStringList &argumentos) {
    QProcess p;
    p.start(programa, argumentos);
    if (!p.waitForFinished(20000)) return "(" + programa + " não terminou)";
    return QString::fromUtf8(p.readAllStandardOutput());
}

// The line of pdfinfo that begins with chave, without the key.
QString info_pdf(const QString &pdf, const QString &chave) {
    for (const QString &l : poppler("pdfinfo", {pdf}).split('\n'))
        if (l.startsWith(chave + ":")) return l.mid(chave.size() + 1).trimmed();
    return {};
}

void tolvane(Simulador &imp, const QStringList &textos) {
    for (const QString &t : textos)
        imp.TolvaneTX(t);
}

// --- what lands on the sheets

struct CasoFolha {
    const char *nome;
    // Sent between the opening and the closing of the port.
    std::function<void(Simulador &)> envia;
    QStringList folhas;
};

class SimuladorFolhas : public ::testing::TestWithParam<CasoFolha> {};

TEST_P(SimuladorFolhas, CadaDocumentoNaSuaFolhaComOPdfAoLado) {
    QTemporaryDir pasta;
    Simulador imp(pasta.path());
    ASSERT_EQ(imp.IniciaPorta("COM2"), Simulador::Feito);
    GetParam().envia(imp);
    EXPECT_EQ(imp.FechaPorta(), Simulador::Feito);
    const QStringList &folhas = GetParam().folhas;
    ASSERT_EQ(imp.UltimoPapel(), folhas.size());
    for (int i = 1; i <= folhas.size(); ++i) {
        EXPECT_EQ(le_utf8(imp.ArquivoPapel(i)), folhas[i - 1]) << "folha " << i;
        EXPECT_TRUE(le_bytes(imp.PastaPapel() + QStringLiteral("/%1.pdf").arg(i, 6, 10, QChar('0')))
                        .startsWith("%PDF-"))
            << "folha " << i;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Textos, SimuladorFolhas,
    ::testing::Values(
        CasoFolha{"ListaEmDuasPartesLidaNaPaginaDaImpressora",
                  [](Simulador &imp) {
                      imp.TravaDoc(1);
                      imp.FormataTX(ConverteTexto("Relação\r\nJoão\r\n"), 1, 0, 0, 0, 0);
                      imp.FormataTX("fim\r\n", 1, 0, 0, 0, 0);
                      imp.TravaDoc(0);
                  },
                  {"Relação\nJoão\nfim\n"}},
        // The copy's road: the last line first, between two ESC "I"; the sheet as the operator
        // reads it once turned.
        CasoFolha{"InvertidaLidaDeCimaParaBaixo",
                  [](Simulador &imp) {
                      imp.TravaDoc(1);
                      imp.FormataTX("", 3, 0, 0, 0, 0);
                      tolvane(imp, {EscI, "3\r\n", "\r\n", ConverteTexto("Ação") + "\r\n", EscI});
                      imp.TravaDoc(0);
                  },
                  {"Ação\n\n3\n"}},
        CasoFolha{"EscILevadoAbertoTerminaNoTravaDoc",
                  [](Simulador &imp) {
                      imp.TravaDoc(1);
                      tolvane(imp, {EscI, "b\r\n", "a\r\n"});
                      imp.TravaDoc(0);
                      imp.TravaDoc(1);
                      tolvane(imp, {"c\r\n", "d\r\n"});
                      imp.TravaDoc(0);
                  },
                  {"a\nb\n", "c\nd\n"}},
        CasoFolha{"EscILevadoAbertoTerminaAoFecharAPorta",
                  [](Simulador &imp) {
                      imp.TravaDoc(1);
                      tolvane(imp, {EscI, "b\r\n", "a\r\n"});
                  },
                  {"a\nb\n"}},
        // Plain text before and after stays where it was sent.
        CasoFolha{"TrechoInvertidoNoMeioDoTexto",
                  [](Simulador &imp) {
                      imp.TravaDoc(1);
                      tolvane(imp, {"antes\r\n" + EscI + "2\r\n1\r\n" + EscI + "depois\r\n"});
                      imp.TravaDoc(0);
                  },
                  {"antes\n1\n2\ndepois\n"}},
        CasoFolha{"ReinicioNaoImprimeEDesligaAInversao",
                  [](Simulador &imp) {
                      imp.TravaDoc(1);
                      tolvane(imp, {EscI + "b\r\na\r\n" + EscArroba + "c\r\n"});
                      imp.TravaDoc(0);
                  },
                  {"a\nb\nc\n"}},
        // The printer reads a stream: the command's letter may come in the next text.
        CasoFolha{"EscNoFimDeUmTextoLevaALetraDoSeguinte",
                  [](Simulador &imp) {
                      imp.TravaDoc(1);
                      tolvane(imp, {"1\r\n\x1B", "I3\r\n2\r\n", EscI});
                      imp.TravaDoc(0);
                  },
                  {"1\n2\n3\n"}},
        CasoFolha{"LinhaInacabadaNaInversaoEhUmaLinha",
                  [](Simulador &imp) {
                      imp.TravaDoc(1);
                      tolvane(imp, {EscI, "b\r\n", "a", EscI, "c\r\n"});
                      imp.TravaDoc(0);
                  },
                  {"a\nb\nc\n"}},
        CasoFolha{"ControlesSomemBrancosETabFicam",
                  [](Simulador &imp) {
                      imp.TravaDoc(1);
                      imp.FormataTX("  a\tb\x07"
                                    "c  \r\n\x0C",
                                    2, 0, 0, 0, 0);
                      imp.TravaDoc(0);
                  },
                  {"  a\tbc  \n"}},
        // A document that put nothing on paper takes no sheet.
        CasoFolha{"DocumentoSemTextoNaoGastaFolha",
                  [](Simulador &imp) {
                      imp.TravaDoc(1);
                      imp.FormataTX("", 3, 0, 0, 0, 0);
                      tolvane(imp, {EscI, "\r", EscI});
                      imp.TravaDoc(0);
                      imp.TravaDoc(1);
                      imp.FormataTX("x\r\n", 1, 0, 0, 0, 0);
                      imp.TravaDoc(0);
                  },
                  {"x\n"}}),
    [](const auto &info) { return std::string(info.param.nome); });

// --- the form of the PDF

struct CasoForma {
    const char *nome;
    std::function<void(Simulador &)> envia;
    const char *tamanho; // pdfinfo's "Page size"
    int paginas;
};

class SimuladorFormaDoPdf : public ::testing::TestWithParam<CasoForma> {};

const char *const Cheque = "609 x 235 pts";
const char *const A4 = "595 x 842 pts (A4)";

QString linhas_numeradas(int n) {
    QString t;
    for (int i = 1; i <= n; ++i)
        t += QStringLiteral("linha %1\r\n").arg(i);
    return t;
}

TEST_P(SimuladorFormaDoPdf, NoFormularioDoQueFoiImpresso) {
    QTemporaryDir pasta;
    Simulador imp(pasta.path());
    imp.IniciaPorta("COM2");
    imp.TravaDoc(1);
    GetParam().envia(imp);
    ASSERT_EQ(imp.TravaDoc(0), Simulador::Feito);
    imp.FechaPorta();
    ASSERT_EQ(imp.UltimoPapel(), 1);
    const QString pdf = imp.PastaPapel() + "/000001.pdf";
    EXPECT_EQ(info_pdf(pdf, "Page size"), QString(GetParam().tamanho));
    EXPECT_EQ(info_pdf(pdf, "Pages"), QString::number(GetParam().paginas));
    EXPECT_EQ(info_pdf(pdf, "Title"), "Folha 000001");
    // The PDF carries the sheet's words, in its order.
    EXPECT_EQ(poppler("pdftotext", {pdf, "-"}).simplified(),
              le_utf8(imp.ArquivoPapel(1)).simplified());
}

INSTANTIATE_TEST_SUITE_P(
    Documentos, SimuladorFormaDoPdf,
    ::testing::Values(
        CasoForma{"BlocoDoChequeTransferencia",
                  [](Simulador &imp) {
                      imp.FormataTX(QString(70, ' ') + "(1.234,50)\n\n  MIL REAIS\r\n" + EscArroba,
                                    2, 0, 0, 0, 0);
                  },
                  Cheque, 1},
        CasoForma{"CopiaDoTransferenciaComCabecalho",
                  [](Simulador &imp) {
                      imp.FormataTX(ConverteTexto("   CóPIA DE CHEQUE") + "\r\n", 2, 0, 0, 1, 0);
                      imp.FormataTX("\n001 - BANCO\r\n", 2, 0, 0, 0, 0);
                  },
                  A4, 1},
        CasoForma{"CopiaLinhaALinha",
                  [](Simulador &imp) {
                      imp.FormataTX("", 3, 0, 0, 0, 0);
                      tolvane(imp, {EscI, "R$ 1,00\r\n", ConverteTexto("Cópia") + "\r\n", EscI});
                  },
                  A4, 1},
        CasoForma{"ListaDeUmaPagina",
                  [](Simulador &imp) { imp.FormataTX(linhas_numeradas(66), 1, 0, 0, 0, 0); }, A4,
                  1},
        // Blank lines at the end feed paper; they don't start another page.
        CasoForma{"ListaComLinhasEmBrancoNoFim",
                  [](Simulador &imp) {
                      imp.FormataTX(linhas_numeradas(66) + "\r\n   \r\n", 1, 0, 0, 0, 0);
                  },
                  A4, 1},
        CasoForma{"TextoMaisLongoQueAPagina",
                  [](Simulador &imp) { imp.FormataTX(linhas_numeradas(67), 1, 0, 0, 0, 0); }, A4,
                  2}),
    [](const auto &info) { return std::string(info.param.nome); });

// --- a PDF that can't be written

struct CasoPdfFalha {
    const char *nome;
    bool travaDoc; // the document ends at TravaDoc(0); otherwise at the closing of the port
};

class SimuladorPdfFalha : public ::testing::TestWithParam<CasoPdfFalha> {};

TEST_P(SimuladorPdfFalha, FolhaFicaComOTextoEAImpressoraRespondeAFalhaDaMemoria) {
    QTemporaryDir pasta;
    Simulador imp(pasta.path());
    // Where the first sheet's PDF would go stands a folder: it can't be written there.
    ASSERT_TRUE(QDir().mkpath(imp.PastaPapel() + "/000001.pdf"));
    imp.IniciaPorta("COM2");
    imp.TravaDoc(1);
    ASSERT_EQ(imp.FormataTX("Lista\r\n", 1, 0, 0, 0, 0), Simulador::Feito);
    if (GetParam().travaDoc) {
        EXPECT_EQ(imp.TravaDoc(0), Simulador::MemoriaFalhou);
    }
    // Nobody looks at TravaDoc's answer: the closing of the port tells it again.
    EXPECT_EQ(imp.FechaPorta(), Simulador::MemoriaFalhou);
    EXPECT_EQ(le_utf8(imp.ArquivoPapel(1)), "Lista\n");
    EXPECT_EQ(QDir(imp.PastaPapel()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList({"000001.pdf", "000001.txt"}));
    EXPECT_FALSE(QFileInfo(imp.PastaPapel() + "/000001.pdf").isFile());
    EXPECT_EQ(imp.UltimoPapel(), 1);

    // The failure went with that document.
    imp.IniciaPorta("COM2");
    imp.TravaDoc(1);
    imp.FormataTX("Outra\r\n", 1, 0, 0, 0, 0);
    EXPECT_EQ(imp.TravaDoc(0), Simulador::Feito);
    EXPECT_EQ(imp.FechaPorta(), Simulador::Feito);
    EXPECT_TRUE(le_bytes(imp.PastaPapel() + "/000002.pdf").startsWith("%PDF-"));
}

INSTANTIATE_TEST_SUITE_P(Fins, SimuladorPdfFalha,
                         ::testing::Values(CasoPdfFalha{"NoTravaDoc", true},
                                           CasoPdfFalha{"AoFecharAPorta", false}),
                         [](const auto &info) { return std::string(info.param.nome); });

// --- the sheets of the copy and of the transfer cheque, sent by their screens

class PapelDasTelas : public teste::Registros {
  protected:
    QString folha(int numero) { return le_utf8(imp().ArquivoPapel(numero)); }
    QString forma(int numero) {
        return info_pdf(imp().PastaPapel() +
                            QStringLiteral("/%1.pdf").arg(numero, 6, 10, QChar('0')),
                        "Page size");
    }

    // A copy layout chosen, and the copy screen opened on a cheque with accents and comments.
    CmpCopia &abre_copia() {
        EXPECT_NE(AbreTabelas(s, d, 0, 0, 0, 0), -2);
        RecordSet rs;
        EXPECT_TRUE(rs.Abre(s.Banco->db(), "Select * From Script"));
        const QStringList layout = {"001", "Padrao", "2",  "5",  "6",  "1",  "2",
                                    "8",   "10",     "14", "60", "5",  "5",  "2",
                                    "2",   "5",      "30", "5",  "52", "56", "68"};
        rs.AddNew();
        for (int i = 0; i < CamposScript().size(); ++i)
            rs.Define(CamposScript()[i], layout[i]);
        EXPECT_TRUE(rs.Update());
        LeGravaIni(s.CaminhoIni, "Opcoes", "Script", "001");
        const ChequeCopia c{
            "237",       "BRADESCO", "1.234,56", "José Antônio da Conceição",
            "São Paulo", "05/02/99", "000123",   {"Aluguel de março", QString(), "Pago à vista"}};
        Tela *t = d.Abre(std::make_unique<CmpCopia>(s, d, c));
        EXPECT_NE(t, nullptr);
        return *static_cast<CmpCopia *>(t);
    }

    // The transfer screen filled as the operator does, on a bank with the layout a new bank
    // starts from.
    ChequeTransf &abre_transferencia(const QString &comentario) {
        LeGravaIni(s.CaminhoIni, "ChequeTransf", "001",
                   linha_transf(posicoes_padrao_transf(), "Banco do Brasil"));
        ChequeTransf &t = abre<ChequeTransf>();
        t.txtBanco.Text = "001";
        t.txtValor.Text = "1.234,50";
        t.txtAgencia.Text = "Centro 0123";
        t.txtConta.Text = "45678-9";
        t.txtCidade.Text = "São José dos Pinhais";
        t.txtNumeroCheque.Text = "000123";
        t.txtComentario.Text = comentario;
        return t;
    }
};

// Inverted, the copy goes out last line first; turned, the sheet reads as the one sent plain,
// which is the page the operator saw.
TEST_F(PapelDasTelas, CopiaInvertidaSaiIgualACopiaDireta) {
    CmpCopia &t = abre_copia();
    ASSERT_TRUE(d.Mensagens.isEmpty()) << d.Textos().join('|').toStdString();
    int numero = 0;
    for (int maiusculas : {0, 1}) {
        if (t.CheckImpMai.Value != maiusculas) t.Clica("CheckImpMai");
        QString pagina = t.CopiaTxt.Text;
        pagina.remove(u'\r');
        for (int invertida : {0, 1}) {
            t.CheckImpInv.Value = invertida;
            t.Clica("BtnCmd", 0);
            ASSERT_EQ(d.Textos(), QStringList{"Insira o Documento."});
            d.Mensagens.clear();
            ASSERT_EQ(imp().UltimoPapel(), ++numero);
        }
        const QByteArray direta = le_bytes(imp().ArquivoPapel(numero - 1));
        EXPECT_EQ(le_bytes(imp().ArquivoPapel(numero)), direta) << maiusculas;
        EXPECT_EQ(QString::fromUtf8(direta), pagina + "\n") << maiusculas;
        EXPECT_EQ(forma(numero), QString(A4));
    }
    EXPECT_TRUE(folha(numero).contains("JOSÉ ANTÔNIO DA CONCEIÇÃO"));
}

TEST_F(PapelDasTelas, CopiaCujoPdfNaoSeGravaAvisaOOperador) {
    CmpCopia &t = abre_copia();
    ASSERT_TRUE(QDir().mkpath(imp().PastaPapel() + "/000001.pdf"));
    t.CheckImpInv.Value = 1;
    t.Clica("BtnCmd", 0);
    EXPECT_EQ(d.Textos(),
              QStringList({"Insira o Documento.", "Problemas na Transmissao da copia"}));
    QString pagina = t.CopiaTxt.Text;
    EXPECT_EQ(folha(1), pagina.remove(u'\r') + "\n");
}

struct CasoTransf {
    const char *nome;
    int comando; // Opcoes: 0 Imprimir, 2 Cópia
    const char *comentario;
    QStringList referencias; // one a sheet, under tests/dados/
    QStringList formas;
};

class PapelDaTransferencia : public PapelDasTelas,
                             public ::testing::WithParamInterface<CasoTransf> {};

TEST_P(PapelDaTransferencia, FolhasConferemComAReferencia) {
    const CasoTransf &c = GetParam();
    ChequeTransf &t = abre_transferencia(QString::fromUtf8(c.comentario));
    t.Clica("Opcoes", c.comando);
    ASSERT_EQ(imp().UltimoPapel(), c.referencias.size()) << d.Textos().join('|').toStdString();
    for (int i = 1; i <= c.referencias.size(); ++i) {
        confere_referencia(folha(i), c.referencias[i - 1]);
        EXPECT_EQ(forma(i), c.formas[i - 1]) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Comandos, PapelDaTransferencia,
    ::testing::Values(
        CasoTransf{"Cheque", 0, "", {"papel/transferencia_padrao.txt"}, {Cheque}},
        // The back on the same cheque, after the operator turned it.
        CasoTransf{"ChequeComVerso",
                   0,
                   "Ref. aluguel de março",
                   {"papel/transferencia_padrao.txt", "papel/transferencia_verso.txt"},
                   {Cheque, Cheque}},
        CasoTransf{"Copia", 2, "Ref. aluguel de março", {"papel/transferencia_copia.txt"}, {A4}}),
    [](const auto &info) { return std::string(info.param.nome); });

} // namespace

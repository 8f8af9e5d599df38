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

QString linhas_numeradas(int n) {
    QString t;
    for (int i = 1; i <= n; ++i)
        t += QStringLiteral("linha %1\r\n").arg(i);
    return t;
}

// --- what lands on the sheets, and the form of the first sheet's PDF

// What is sent between TravaDoc(1) and TravaDoc(0), each text converted for the printer and
// led by how it goes: "T" by TolvaneTX, "1" to "3" by FormataTX in that mode, "H" by FormataTX
// with the header; "|" ends the document and starts another.
struct CasoFolha {
    const char *nome;
    QStringList envia;
    QStringList folhas;
    bool fecha = true; // the last document ends at TravaDoc(0), or else at the port's closing
    const char *tamanho = nullptr; // pdfinfo's "Page size" of the first sheet, when looked at
    int paginas = 1;
};

class SimuladorFolhas : public ::testing::TestWithParam<CasoFolha> {};

TEST_P(SimuladorFolhas, CadaDocumentoNaSuaFolhaComOPdfAoLado) {
    const CasoFolha &c = GetParam();
    QTemporaryDir pasta;
    Simulador imp(pasta.path());
    ASSERT_EQ(imp.IniciaPorta("COM2"), Simulador::Feito);
    imp.TravaDoc(1);
    for (const QString &e : c.envia) {
        const QString texto = ConverteTexto(e.mid(1));
        if (e == "|")
            imp.TravaDoc(0), imp.TravaDoc(1);
        else if (e[0] == u'T')
            imp.TolvaneTX(texto);
        else
            imp.FormataTX(texto, e[0] == u'H' ? 2 : e.left(1).toInt(), 0, 0, e[0] == u'H', 0);
    }
    if (c.fecha) EXPECT_EQ(imp.TravaDoc(0), Simulador::Feito);
    EXPECT_EQ(imp.FechaPorta(), Simulador::Feito);
    ASSERT_EQ(imp.UltimoPapel(), std::max(qsizetype(1), c.folhas.size()));
    for (int i = 1; i <= c.folhas.size(); ++i) {
        EXPECT_EQ(le_utf8(imp.ArquivoPapel(i)), c.folhas[i - 1]) << "folha " << i;
        EXPECT_TRUE(le_bytes(imp.PastaPapel() + QStringLiteral("/%1.pdf").arg(i, 6, 10, QChar('0')))
                        .startsWith("%PDF-"))
            << "folha " << i;
    }
    if (!c.tamanho) return;
    const QString pdf = imp.PastaPapel() + "/000001.pdf";
    EXPECT_EQ(info_pdf(pdf, "Page size"), QString(c.tamanho));
    EXPECT_EQ(info_pdf(pdf, "Pages"), QString::number(c.paginas));
    EXPECT_EQ(info_pdf(pdf, "Title"), "Folha 000001");
    // The PDF carries the sheet's words, in its order.
    EXPECT_EQ(poppler("pdftotext", {pdf, "-"}).simplified(),
              le_utf8(imp.ArquivoPapel(1)).simplified());
}

const char *const Cheque = "609 x 235 pts";
const char *const A4 = "595 x 842 pts (A4)";
using F = CasoFolha;
INSTANTIATE_TEST_SUITE_P(
    Textos, SimuladorFolhas,
    ::testing::Values(
        F{"ListaEmDuasPartes", {"1Relação\r\nJoão\r\n", "1fim\r\n"}, {"Relação\nJoão\nfim\n"}},
        // The copy's road: the last line first, between two ESC "I"; the sheet as the operator
        // reads it once turned.
        F{"Invertida",
          {"3", "T\x1BI", "T3\r\n", "T\r\n", "TAção\r\n", "T\x1BI"},
          {"Ação\n\n3\n"},
          true,
          A4},
        F{"EscIAteOTravaDoc",
          {"T\x1BI", "Tb\r\n", "Ta\r\n", "|", "Tc\r\n", "Td\r\n"},
          {"a\nb\n", "c\nd\n"}},
        F{"EscIAteFecharAPorta", {"T\x1BI", "Tb\r\n", "Ta\r\n"}, {"a\nb\n"}, false},
        // Plain text before and after stays where it was sent.
        F{"TrechoInvertido",
          {"Tantes\r\n\x1BI2\r\n1\r\n\x1BIdepois\r\n"},
          {"antes\n1\n2\ndepois\n"}},
        F{"Reinicio", {"T\x1BIb\r\na\r\n\x1B@c\r\n"}, {"a\nb\nc\n"}},
        // The printer reads a stream: the command's letter may come in the next text.
        F{"EscPartido", {"T1\r\n\x1B", "TI3\r\n2\r\n", "T\x1BI"}, {"1\n2\n3\n"}},
        F{"LinhaInacabada", {"T\x1BI", "Tb\r\n", "Ta", "T\x1BI", "Tc\r\n"}, {"a\nb\nc\n"}},
        F{"Controles",
          {"2  a\tb\x07"
           "c  \r\n\x0C"},
          {"  a\tbc  \n"}},
        // A document that put nothing on paper takes no sheet.
        F{"DocumentoVazio", {"3", "T\x1BI", "T\r", "T\x1BI", "|", "1x\r\n"}, {"x\n"}},
        F{"BlocoTransf",
          {"2" + QString(70, ' ') + "(1.234,50)\n\n  MIL REAIS\r\n\x1B@"},
          {},
          true,
          Cheque},
        F{"CopiaTransf", {"H   CóPIA DE CHEQUE\r\n", "2\n001 - BANCO\r\n"}, {}, true, A4},
        // Blank lines at the end feed paper; they don't start another page.
        F{"BrancosNoFim", {"1" + linhas_numeradas(66) + "\r\n   \r\n"}, {}, true, A4},
        F{"MaisQueUmaPagina", {"1" + linhas_numeradas(67)}, {}, true, A4, 2}),
    [](const auto &info) { return std::string(info.param.nome); });

// --- a PDF that can't be written

// Where the first sheet's PDF would go stands a folder: the sheet keeps its text, and the
// printer answers the memory's failure at the end of the document, whether that is TravaDoc(0)
// or the closing of the port; nobody looks at TravaDoc's answer, so the closing tells it again.
TEST(SimuladorPdfFalha, FolhaFicaComOTextoEAImpressoraRespondeAFalhaDaMemoria) {
    for (const bool travaDoc : {true, false}) {
        QTemporaryDir pasta;
        Simulador imp(pasta.path());
        ASSERT_TRUE(QDir().mkpath(imp.PastaPapel() + "/000001.pdf"));
        imp.IniciaPorta("COM2");
        imp.TravaDoc(1);
        ASSERT_EQ(imp.FormataTX("Lista\r\n", 1, 0, 0, 0, 0), Simulador::Feito);
        if (travaDoc) EXPECT_EQ(imp.TravaDoc(0), Simulador::MemoriaFalhou);
        EXPECT_EQ(imp.FechaPorta(), Simulador::MemoriaFalhou) << travaDoc;
        EXPECT_EQ(le_utf8(imp.ArquivoPapel(1)), "Lista\n");
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
}

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
        // The face, and the back on the same cheque after the operator turned it.
        CasoTransf{"ChequeComVerso",
                   0,
                   "Ref. aluguel de março",
                   {"papel/transferencia_padrao.txt", "papel/transferencia_verso.txt"},
                   {Cheque, Cheque}},
        CasoTransf{"Copia", 2, "Ref. aluguel de março", {"papel/transferencia_copia.txt"}, {A4}}),
    [](const auto &info) { return std::string(info.param.nome); });

} // namespace

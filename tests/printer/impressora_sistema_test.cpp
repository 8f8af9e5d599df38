// The system printer read back from what it printed: every job goes into a PDF through the same
// painting as paper, and each field's first word is found in it by pdftotext -bbox.
#include "apoio/registro_log.h"
#include "cheque/frente.h"
#include "cheque/main.h"
#include "core/desktop_roteiro.h"
#include "core/ini.h"
#include "core/relogio.h"
#include "printer/impressao.h"
#include "printer/impressora_sistema.h"
#include "printer/palavras_pdf.h"
#include "printer/pinta_sistema.h"
#include "store/pasta_dados.h"
#include "store/talao.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThread>
#include <cmath>
#include <gtest/gtest.h>
#include <unistd.h>

using namespace vexa;

namespace {

struct Caso {
    const char *nome = "";
    QString banco = {}, posicoes = {}; // no positions: the bank as the factory left it
    QString folha = {}, folhaX = {}, folhaY = {};
    QString calibracao = {};
};

// Each field's first word where the layout and the calibration put it, within 0.3 mm. A PDF
// that went through PostScript keeps its glyphs where they were but neither their letters nor
// the marks around the amount, and its fonts' other metrics move the baseline read back by a
// third of a millimetre: SoPosicao takes the word nearest to where the field's first letter or
// digit belongs, whatever it reads, and the baseline within 0.5 mm.
void confere_campos(const QList<PalavraPdf> &palavras, const ConfiguracaoSistema &cfg,
                    const QString &posicoes, bool SoPosicao = false) {
    const QList<CampoFace> campos = campos_face({posicoes}, "1.234,56", "Fulano de Tal", "Santos",
                                                "07/03/25", {{1, {15, 60, "PAGAR SO EM CONTA"}}});
    ASSERT_EQ(campos.size(), 9);
    for (const CampoFace &campo : campos) {
        const QString primeira = campo.Texto.section(u' ', 0, 0, QString::SectionSkipEmpty);
        int marcas = 0;
        while (SoPosicao && marcas < campo.Texto.size() && !campo.Texto[marcas].isLetterOrNumber())
            ++marcas;
        if (marcas == campo.Texto.size()) marcas = 0; // a line of marks alone keeps them
        const double x = folha_x(cfg, cfg.OrigemX + (campo.Coluna - 1 + marcas) * cfg.PassoColuna);
        const double y = folha_y(cfg, cfg.OrigemY + (campo.Linha - 1) * cfg.PassoLinha);
        const auto distancia = [&](const PalavraPdf &p) { return std::hypot(p.X - x, p.Base - y); };
        const PalavraPdf *achada = nullptr;
        for (const PalavraPdf &p : palavras)
            if ((SoPosicao || p.Texto == primeira) &&
                (!achada || distancia(p) < distancia(*achada)))
                achada = &p;
        ASSERT_NE(achada, nullptr) << qPrintable(campo.Nome + ": " + primeira);
        EXPECT_NEAR(achada->X, x, 0.3) << qPrintable(campo.Nome);
        EXPECT_NEAR(achada->Base, y, SoPosicao ? 0.5 : 0.3) << qPrintable(campo.Nome);
    }
}

class ImpressoraSistemaPdf : public ::testing::TestWithParam<Caso> {
  protected:
    void SetUp() override {
        prepara_pasta_dados(s);
        define_impressor_sistema(imprime_sistema);
        LeGravaIni(s.CaminhoIni, "Sistema", "Impressora", "Sistema");
        LeGravaIni(s.CaminhoIni, "Sistema", "ImpressoraSistema", "Jato");
        s.Impressora = cria_impressora(s);
        imp().DefineArquivoPdf(pdf);
    }
    ImpressoraSistema &imp() { return static_cast<ImpressoraSistema &>(*s.Impressora); }
    void configura(const Caso &c) {
        for (auto [chave, valor] :
             {std::pair{"Folha", c.folha}, {"FolhaX", c.folhaX}, std::pair{"FolhaY", c.folhaY}})
            if (!valor.isEmpty()) LeGravaIni(s.CaminhoIni, "ChequeSistema", chave, valor);
        if (!c.calibracao.isEmpty()) LeGravaIni(s.CaminhoIni, "Calibracao", "Jato", c.calibracao);
        imp().IniciaPorta("");
        if (!c.posicoes.isEmpty()) imp().IncluiBanco(c.banco, c.posicoes);
    }

    QTemporaryDir pasta;
    Sessao s{pasta.path()};
    DesktopRoteiro d;
    QString pdf = pasta.filePath("cheque.pdf");
};

TEST_P(ImpressoraSistemaPdf, CadaCampoOndeOLeiauteEACalibracaoOPoem) {
    const Caso c = GetParam();
    fixa_hoje(QDate(2025, 3, 7));
    configura(c);
    imp().ImprimeCampoX(1, 15, 60, "PAGAR SO EM CONTA");
    ASSERT_EQ(imp().ImprimeCheque(c.banco, "1.234,56", "Fulano de Tal", "Santos", "07/03/25", {}),
              1);
    imp().FechaPorta();
    fixa_hoje({});

    confere_campos(palavras_pdf(pdf), imp().Configuracao(), imp().Bancos().value(c.banco));
}

INSTANTIATE_TEST_SUITE_P(
    BancosFolhasCalibracoes, ImpressoraSistemaPdf,
    ::testing::Values(
        Caso{"FabricaFolhaDoCheque", "001", {}, {}, {}, {}, {}},
        Caso{"OutroLeiauteEmA4",
             "237",
             "002,006,008,011,014,080,012,004,014,045,030,042,060",
             "A4",
             "20",
             "30",
             {}},
        Caso{"Calibrada", "341", "003,007,009,012,016,090,020,010,012,055,031,040,065", "A4",
             "17,5", "20", "1.50;-0.80;1.0100;0.9900"},
        Caso{"CalibradaNaFolhaDoCheque", "001", {}, "Cheque", {}, {}, "-1.00;2.00;0.9950;1.0050"}),
    [](const auto &info) { return std::string(info.param.nome); });

// Nothing prints in the magnetic band: the layout is refused with its reason, and no job goes.
TEST_F(ImpressoraSistemaPdf, LeiauteNaFaixaMagneticaERecusadoAntesDeImprimir) {
    configura({"", "777", "001,005,007,010,021,092,017,009,011,050,031,040,065"});
    imp().FechaPorta();
    const std::optional<qint16> r =
        imprime_um_cheque(s, d, nullptr, {"777", "10,00", "Maria", "Santos", "07/03/25", {}});
    EXPECT_EQ(r, ImpressoraSistema::FaixaMagnetica);
    EXPECT_FALSE(QFile::exists(pdf));
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_EQ(d.Mensagens[0].Titulo, "Impressão do Cheque (009)");
    EXPECT_TRUE(d.Mensagens[0].Texto.startsWith(
        "Problemas com a impressão do cheque.\n\nO leiaute do banco põe o campo Cidade (linha "
        "21) fora da área de impressão"));
}

// Lists and other running text go as pages; a line wider than the page makes letters smaller.
TEST_F(ImpressoraSistemaPdf, TextoViraPaginasA4) {
    configura({"", "", {}, "A4"});
    imp().FechaPorta();
    const QString larga = "Relatorio " + QString(130, u'x');
    ASSERT_TRUE(EnviaTextoImpressora(s, d, "Lista de Cheques\r\n" + larga + "\r\n", 1));
    const QList<PalavraPdf> palavras = palavras_pdf(pdf);
    ASSERT_EQ(palavras.size(), 5);
    EXPECT_EQ(palavras[0].Texto, "Lista");
    EXPECT_NEAR(palavras[0].X, 10, 0.3);
    EXPECT_LT(palavras[4].X + palavras[4].Largura, 200.3);
}

// With a spooler the operator says how the cheque came out: one that came out wrong is
// registered cancelled, its note in the first free comment line (ahead of the third when all
// are full). Unregistered, nothing is asked.
TEST_F(ImpressoraSistemaPdf, ChequeNoSpoolerPerguntaComoSaiuEORegistroGuardaOErrado) {
    define_impressor_sistema([](const TrabalhoSistema &) { return 0; });
    imp().DefineArquivoPdf({});
    const TextosCheque textos{"001", "10,00", "Maria", "Santos", "07/03/25", {}};
    struct CasoResposta {
        Resposta resposta;
        QStringList comentarios, gravados;
        QString stCancel, situacao;
    };
    const QString nota = NotaChequeErrado;
    const CasoResposta casos[] = {
        {Resposta::Yes, {"Aluguel", "", ""}, {"Aluguel", "", ""}, " ", "impresso e registrado."},
        {Resposta::No,
         {"Aluguel", "", ""},
         {"Aluguel", nota, ""},
         "C",
         "saiu errado e foi registrado como cancelado."},
        {Resposta::No,
         {"a", "b", "c"},
         {"a", "b", nota + " - c"},
         "C",
         "saiu errado e foi registrado como cancelado."},
    };
    for (const CasoResposta &c : casos) {
        ChequeImpresso cheque{"001", "10,00", "Maria", "Santos", "07/03/25", "000123"};
        cheque.Comentarios = c.comentarios;
        d.Respostas = {c.resposta};
        const Desfecho f = imprime_e_registra(s, d, nullptr, textos, cheque, true);
        EXPECT_EQ(d.Mensagens.last().Texto, PerguntaChequeSaiu);
        EXPECT_EQ(d.Mensagens.last().Padrao, Resposta::Yes);
        EXPECT_EQ(situacao_cheque("000123", "10,00", f), "Cheque 000123 de R$ 10,00 " + c.situacao);
        const auto linha = teste::linhas_do_log(s, d).last();
        EXPECT_EQ(linha.value("StCancel"), c.stCancel);
        EXPECT_EQ((QStringList{linha.value("Comentario"), linha.value("Comentario1"),
                               linha.value("Comentario2")}),
                  c.gravados);
    }
    d.Mensagens.clear();
    EXPECT_TRUE(imprime_e_registra(s, d, nullptr, textos, {}, false).Impresso());
    EXPECT_TRUE(d.Mensagens.isEmpty());

    define_impressor_sistema([](const TrabalhoSistema &) { return 482; });
    EXPECT_EQ(imprime_um_cheque(s, d, nullptr, textos), ImpressoraSistema::SemImpressora);
    EXPECT_EQ(d.Textos(), QStringList{"Problemas com a impressão do cheque.\n\n" +
                                      imp().Motivo(ImpressoraSistema::SemImpressora)});
}

// On the entry screen the cheque that came out wrong is a spoiled leaf: the book moves on and
// the same cheque waits, with the next number, for one key.
TEST_F(ImpressoraSistemaPdf, ChequeQueSaiuErradoVoltaParaAProximaFolha) {
    define_impressor_sistema([](const TrabalhoSistema &) { return 0; });
    imp().DefineArquivoPdf({});
    grava_proximo_cheque(s, "001", "000123");
    auto *m = static_cast<Main *>(d.Abre(std::make_unique<Main>(s, d, QString())));
    const QStringList campos{"001", "10,00", "Maria", "Santos", "07/03/25", "", "000123"};
    for (int i = 0; i < 7; ++i)
        if (i != 5) m->Text1[i].Text = campos[i];
    m->CheckBox.Value = 1;
    d.Respostas = {Resposta::OK, Resposta::No}; // the leaf in, and it came out wrong
    m->Clica("Opcoes", 0);
    EXPECT_EQ(teste::linhas_do_log(s, d).value(0).value("StCancel"), "C");
    EXPECT_EQ(m->Text1[6].Text, "000124");
    EXPECT_EQ(m->Text1[2].Text, "Maria");
    EXPECT_EQ(m->Foco().texto(), "Opcoes(0)");
    d.Respostas = {Resposta::OK, Resposta::Yes};
    m->Clica("Opcoes", 0);
    const auto linha = teste::linhas_do_log(s, d).value(1);
    EXPECT_EQ(linha.value("NRCH") + linha.value("StCancel"), "000124 ");
    EXPECT_EQ(proximo_cheque(s, "001"), "000125");
}

// The real print queue: a CUPS server of its own on a private socket, with a PDF printer, and
// the cheque printed to it by a copy of this program that talks to that server alone. The job
// the queue spooled is read as the others, every word within 0.3 mm; the PDF its printer wrote
// after PostScript, by its glyphs' places.
TEST(FilaCups, ChequeNaFilaSaiOndeOLeiauteOPoe) {
    const QString filho = qEnvironmentVariable("VEXA_CUPS_FILHO");
    if (!filho.isEmpty()) {
        Sessao s{filho};
        define_impressor_sistema(imprime_sistema);
        ImpressoraSistema imp(s.CaminhoApp, s.CaminhoIni);
        imp.IniciaPorta({});
        imp.ImprimeCampoX(1, 15, 60, "PAGAR SO EM CONTA");
        EXPECT_EQ(imp.ImprimeCheque("001", "1.234,56", "Fulano de Tal", "Santos", "07/03/25", {}),
                  1);
        imp.FechaPorta();
        return;
    }
    const QString cupsd = QStandardPaths::findExecutable("cupsd", {"/usr/sbin", "/sbin"});
    if (cupsd.isEmpty() || geteuid() != 0) GTEST_SKIP() << "sem cupsd, ou sem ser root";
    QTemporaryDir pasta;
    const QString d = pasta.path();
    for (const char *sub : {"spool", "tmp", "cache", "state", "log", "pdf", "cpspool", "dados"})
        QDir(d).mkpath(sub);
    // The filters run as another user: they write their temporary files, and the PDF printer
    // its own, where anybody may.
    for (const char *sub : {"tmp", "pdf", "cpspool"})
        QFile::setPermissions(d + "/" + sub, QFileDevice::Permissions(0x7777));
    const auto escreve = [](const QString &arquivo, const QString &texto) {
        QFile f(arquivo);
        return f.open(QIODevice::WriteOnly) && f.write(texto.toUtf8()) == texto.toUtf8().size();
    };
    ASSERT_TRUE(escreve(d + "/cupsd.conf", "Listen " + d +
                                               "/cups.sock\nBrowsing No\nPreserveJobFiles Yes\n"
                                               "WebInterface No\nDefaultAuthType None\n"));
    ASSERT_TRUE(escreve(d + "/cups-files.conf",
                        QString("ServerRoot %1\nRequestRoot %1/spool\nTempDir %1/tmp\n"
                                "CacheDir %1/cache\nStateDir %1/state\nErrorLog %1/log/error_log\n"
                                "AccessLog %1/log/access_log\nPageLog %1/log/page_log\n"
                                "ServerBin /usr/lib/cups\nDataDir /usr/share/cups\n")
                            .arg(d)));
    // The PDF printer reads its settings, by the name in its address, from the system's folder.
    const QString fila = "vexateste" + QString::number(QCoreApplication::applicationPid());
    const QString conf = "/etc/cups/cups-pdf-" + fila + ".conf";
    ASSERT_TRUE(
        escreve(conf, QString("Out %1/pdf\nAnonDirName %1/pdf\nSpool %1/cpspool\n").arg(d)));
    QProcess servidor;
    servidor.start(cupsd, {"-f", "-c", d + "/cupsd.conf", "-s", d + "/cups-files.conf"});
    ASSERT_TRUE(servidor.waitForStarted());
    for (int i = 0; i < 100 && !QFile::exists(d + "/cups.sock"); ++i)
        QThread::msleep(50);
    QProcess::execute("lpadmin",
                      {"-h", d + "/cups.sock", "-p", "VexaPDF", "-E", "-v", "cups-pdf:/" + fila,
                       "-P", "/usr/share/ppd/cups-pdf/CUPS-PDF_noopt.ppd"});

    Sessao s{d + "/dados"};
    LeGravaIni(s.CaminhoIni, "Sistema", "ImpressoraSistema", "VexaPDF");
    LeGravaIni(s.CaminhoIni, "ChequeSistema", "Folha", "A4");
    QProcess copia;
    QProcessEnvironment amb = QProcessEnvironment::systemEnvironment();
    amb.insert("VEXA_CUPS_FILHO", s.CaminhoApp);
    amb.insert("CUPS_SERVER", d + "/cups.sock");
    copia.setProcessEnvironment(amb);
    copia.start(QCoreApplication::applicationFilePath(),
                {"--gtest_filter=FilaCups.ChequeNaFilaSaiOndeOLeiauteOPoe"});
    ASSERT_TRUE(copia.waitForFinished(60000));
    EXPECT_EQ(copia.exitCode(), 0) << copia.readAllStandardOutput().toStdString();

    QStringList pdfs;
    for (int i = 0; i < 600 && pdfs.isEmpty(); ++i) {
        QThread::msleep(100);
        pdfs = QDir(d + "/pdf").entryList({"*.pdf"});
    }
    // The queue writes the file as it converts: wait until it stops growing.
    for (qint64 antes = -1; !pdfs.isEmpty() && QFileInfo(d + "/pdf/" + pdfs[0]).size() != antes;
         QThread::msleep(300))
        antes = QFileInfo(d + "/pdf/" + pdfs[0]).size();
    servidor.terminate();
    servidor.waitForFinished();
    QFile::remove(conf);
    ASSERT_EQ(pdfs.size(), 1);
    ImpressoraSistema imp(s.CaminhoApp, s.CaminhoIni);
    imp.IniciaPorta({});
    // The job the queue accepted, word by word; then what its PDF printer made of it.
    const QStringList trabalhos = QDir(d + "/spool").entryList({"d*-001"});
    ASSERT_EQ(trabalhos.size(), 1);
    confere_campos(palavras_pdf(d + "/spool/" + trabalhos[0]), imp.Configuracao(),
                   imp.Bancos().value("001"));
    confere_campos(palavras_pdf(d + "/pdf/" + pdfs[0]), imp.Configuracao(),
                   imp.Bancos().value("001"), true);
}

} // namespace

#include "ui/desktop_qt.h"

#include <QApplication>
#include <QDialog>
#include <QPrinter>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>
#include <QXmlStreamReader>
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

using namespace vexa;

namespace {

struct Palavra {
    QString texto;
    double x = 0, y = 0; // top left corner, in points
};

// Each page of a PDF as its words with their positions, read back by pdftotext.
QList<QList<Palavra>> palavras_do_pdf(const QString &pdf) {
    QProcess p;
    p.start("pdftotext", {"-bbox", pdf, "-"});
    p.waitForFinished(20000);
    QList<QList<Palavra>> paginas;
    QXmlStreamReader xml(p.readAllStandardOutput());
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) continue;
        if (xml.name() == u"page") {
            paginas.append(QList<Palavra>());
        } else if (xml.name() == u"word" && !paginas.isEmpty()) {
            const auto a = xml.attributes();
            const double x = a.value("xMin").toDouble(), y = a.value("yMin").toDouble();
            paginas.last().append({xml.readElementText(), x, y});
        }
    }
    // In reading order: line by line, left to right.
    for (auto &pagina : paginas)
        std::sort(pagina.begin(), pagina.end(), [](const Palavra &a, const Palavra &b) {
            return std::pair(std::round(a.y), a.x) < std::pair(std::round(b.y), b.x);
        });
    return paginas;
}

QString fontes_do_pdf(const QString &pdf) {
    QProcess p;
    p.start("pdffonts", {pdf});
    p.waitForFinished(20000);
    return QString::fromUtf8(p.readAllStandardOutput());
}

struct Esperada {
    int pagina, linha, coluna;
    const char *texto;
};

// A list printed on the system printer (here a PDF printer): its pages in order, every word
// at its line and column of a fixed-pitch font of the document's size.
TEST(ImpressaoSistema, PaginasSaemNaOrdemComAsColunasNoLugar) {
    QTemporaryDir pasta;
    const QString pdf = pasta.filePath("lista.pdf");
    QPrinter impressora(QPrinter::HighResolution);
    impressora.setOutputFormat(QPrinter::PdfFormat);
    impressora.setOutputFileName(pdf);

    DocumentoImpressao doc;
    doc.Titulo = "Lista";
    doc.TamanhoFonte = 10;
    doc.Paginas = {{"Codigo  Nome", "001     Banco do Brasil", "341     Banco Itaú"},
                   {"Página 2", "", "São Paulo  Conceição"}};
    ASSERT_EQ(ui::DesktopQt::ImprimePaginas(impressora, doc), 0);

    const auto paginas = palavras_do_pdf(pdf);
    ASSERT_EQ(paginas.size(), 2);
    const Esperada esperadas[] = {{0, 0, 0, "Codigo"}, {0, 0, 8, "Nome"},      {0, 1, 0, "001"},
                                  {0, 1, 8, "Banco"},  {0, 1, 14, "do"},       {0, 1, 17, "Brasil"},
                                  {0, 2, 0, "341"},    {0, 2, 8, "Banco"},     {0, 2, 14, "Itaú"},
                                  {1, 0, 0, "Página"}, {1, 0, 7, "2"},         {1, 2, 0, "São"},
                                  {1, 2, 4, "Paulo"},  {1, 2, 11, "Conceição"}};
    ASSERT_EQ(paginas[0].size() + paginas[1].size(), std::size(esperadas));

    // Courier New, or its metric twin: a 10-point character is 6 points wide.
    const double passo = (paginas[0][1].x - paginas[0][0].x) / 8;
    EXPECT_NEAR(passo, 6.0, 0.05);
    const double entrelinha = paginas[0][2].y - paginas[0][0].y;
    EXPECT_GT(entrelinha, 9.0);
    int i[2] = {0, 0};
    for (const Esperada &e : esperadas) {
        const auto &pagina = paginas[e.pagina];
        const Palavra &w = pagina[i[e.pagina]++];
        EXPECT_EQ(w.texto, QString::fromUtf8(e.texto));
        EXPECT_NEAR((w.x - pagina[0].x) / passo, e.coluna, 0.05) << e.texto;
        EXPECT_NEAR((w.y - pagina[0].y) / entrelinha, e.linha, 0.05) << e.texto;
    }
    const QString fontes = fontes_do_pdf(pdf);
    EXPECT_TRUE(fontes.contains("CourierNew") || fontes.contains("LiberationMono"))
        << fontes.toStdString();
}

// The operator closes the print dialog: nothing is printed and the error is the cancelled
// dialog's, which the error table passes over in silence.
TEST(ImpressaoSistema, DialogoCanceladoDa32755) {
    ui::DesktopQt desktop;
    QString titulo;
    QTimer::singleShot(0, [&] {
        if (auto *dialogo = qobject_cast<QDialog *>(QApplication::activeModalWidget())) {
            titulo = dialogo->windowTitle();
            dialogo->reject();
        }
    });
    DocumentoImpressao doc;
    doc.Paginas = {{"linha"}};
    EXPECT_EQ(desktop.ImprimeSistema(doc), 32755);
    EXPECT_EQ(titulo, "Imprimir");
}

} // namespace

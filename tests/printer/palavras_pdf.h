#pragma once
// The words of a PDF with their places, in millimetres from the page's top left corner, as
// pdftotext -bbox reads them (poppler-utils).
#include <QProcess>
#include <QRegularExpression>
#include <QString>

namespace vexa {

struct PalavraPdf {
    QString Texto;
    double X = 0, Base = 0, Largura = 0; // the left end of its baseline, and its width
    int Pagina = 0;
};

inline QList<PalavraPdf> palavras_pdf(const QString &arquivo) {
    QProcess p;
    p.start("pdftotext", {"-bbox", arquivo, "-"});
    p.waitForFinished(30000);
    const QString html = QString::fromUtf8(p.readAllStandardOutput());
    // The box of a word runs from the font's ascent to its descent: the baseline lies at the
    // font's share of ascent in that height.
    constexpr double Subida = 1901.0 / (1901.0 + 483.0), Mm = 25.4 / 72.0;
    static const QRegularExpression palavra(
        R"re(<page |<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)" yMax="([\d.]+)">([^<]*)</word>)re");
    QList<PalavraPdf> r;
    int pagina = 0;
    for (auto it = palavra.globalMatch(html); it.hasNext();) {
        const auto m = it.next();
        if (m.captured(0) == "<page ") {
            ++pagina;
            continue;
        }
        const double x0 = m.captured(1).toDouble(), y0 = m.captured(2).toDouble();
        const double x1 = m.captured(3).toDouble(), y1 = m.captured(4).toDouble();
        QString texto = m.captured(5);
        texto.replace("&amp;", "&")
            .replace("&lt;", "<")
            .replace("&gt;", ">")
            .replace("&quot;", "\"");
        r.append({texto, x0 * Mm, (y0 + (y1 - y0) * Subida) * Mm, (x1 - x0) * Mm, pagina});
    }
    return r;
}

} // namespace vexa

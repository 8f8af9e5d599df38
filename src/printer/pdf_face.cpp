#include "printer/pdf_face.h"

#include "printer/face_cheque.h"

#include <QBuffer>
#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

namespace vexa {

namespace {

struct Medidas {
    QPageSize pagina;
    qreal margem; // millimetres
    int colunas, linhas;
    bool moldura; // the edge of the form, drawn light
};

Medidas medidas(Formulario formulario) {
    if (formulario == Formulario::Cheque)
        return {QPageSize(QSizeF(215, 83), QPageSize::Millimeter, "Cheque"), 5, ColunasFace,
                LinhasFace, true};
    return {QPageSize(QPageSize::A4), 10, 80, 66, false};
}

} // namespace

QByteArray pdf_face(const QStringList &linhas, const QString &titulo, Formulario formulario) {
    if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance())) return {};
    const Medidas m = medidas(formulario);
    int colunas = m.colunas;
    for (const QString &l : linhas)
        colunas = qMax(colunas, int(l.size()));
    // Blank lines at the end feed paper and print nothing: they don't start another page.
    qsizetype total = linhas.size();
    while (total > 0 && linhas[total - 1].trimmed().isEmpty())
        --total;
    // Painted in memory: the sheet's file is then written whole, or not at all.
    QByteArray bytes;
    QBuffer saida(&bytes);
    saida.open(QIODevice::WriteOnly);
    {
        QPdfWriter pdf(&saida);
        pdf.setTitle(titulo);
        pdf.setResolution(300);
        pdf.setPageSize(m.pagina);
        pdf.setPageMargins(QMarginsF(m.margem, m.margem, m.margem, m.margem),
                           QPageLayout::Millimeter);
        QPainter p;
        if (!p.begin(&pdf)) return {};
        QFont fonte("DejaVu Sans Mono");
        fonte.setStyleHint(QFont::TypeWriter);
        fonte.setFixedPitch(true);
        fonte.setPointSizeF(8);
        p.setFont(fonte);
        const QFontMetricsF fm(fonte, &pdf);
        const qreal largura = fm.horizontalAdvance(QString(colunas, u'M'));
        const qreal altura = fm.lineSpacing() * m.linhas;
        const qreal escala = qMin(pdf.width() / largura, pdf.height() / altura);
        p.scale(escala, escala);
        // Every line in the one font: the PDF embeds it once, with only the glyphs used.
        for (qsizetype inicio = 0; inicio == 0 || inicio < total; inicio += m.linhas) {
            if (inicio > 0) pdf.newPage();
            if (m.moldura) {
                p.setPen(QColor(200, 200, 200));
                p.drawRect(QRectF(0, 0, largura, altura));
                p.setPen(Qt::black);
            }
            for (qsizetype i = inicio; i < qMin(total, inicio + m.linhas); ++i)
                p.drawText(QPointF(0, fm.ascent() + (i - inicio) * fm.lineSpacing()), linhas[i]);
        }
        if (!p.end()) return {};
    }
    return bytes;
}

} // namespace vexa

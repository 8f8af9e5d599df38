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

QByteArray pdf_face(const QStringList &face, const QString &titulo) {
    if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance())) return {};
    // Painted in memory: the sheet's file is then written whole, or not at all.
    QByteArray bytes;
    QBuffer saida(&bytes);
    saida.open(QIODevice::WriteOnly);
    {
        QPdfWriter pdf(&saida);
        pdf.setTitle(titulo);
        pdf.setResolution(300);
        pdf.setPageSize(QPageSize(QSizeF(215, 83), QPageSize::Millimeter, "Cheque"));
        pdf.setPageMargins(QMarginsF(5, 5, 5, 5), QPageLayout::Millimeter);
        QPainter p;
        if (!p.begin(&pdf)) return {};
        QFont fonte("DejaVu Sans Mono");
        fonte.setStyleHint(QFont::TypeWriter);
        fonte.setFixedPitch(true);
        fonte.setPointSizeF(8);
        p.setFont(fonte);
        const QFontMetricsF fm(fonte, &pdf);
        const qreal largura = fm.horizontalAdvance(QString(ColunasFace, u'M'));
        const qreal altura = fm.lineSpacing() * LinhasFace;
        const QRectF area = QRectF(QPointF(0, 0), QSizeF(pdf.width(), pdf.height()));
        const qreal escala = qMin(area.width() / largura, area.height() / altura);
        p.scale(escala, escala);
        p.setPen(QColor(200, 200, 200));
        p.drawRect(QRectF(0, 0, largura, altura));
        p.setPen(Qt::black);
        // Every line in the one font: the PDF embeds it once, with only the glyphs used.
        for (int i = 0; i < face.size(); ++i)
            p.drawText(QPointF(0, fm.ascent() + i * fm.lineSpacing()), face[i]);
        if (!p.end()) return {};
    }
    return bytes;
}

} // namespace vexa

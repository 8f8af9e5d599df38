#include "printer/pinta_sistema.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>

namespace vexa {

namespace {

// The one monospaced font, at a size large enough to measure its advance exactly; each text is
// then scaled so that its characters stand Passo millimetres apart.
QFont fonte() {
    QFont f("DejaVu Sans Mono");
    f.setStyleHint(QFont::TypeWriter);
    f.setFixedPitch(true);
    f.setKerning(false);
    f.setHintingPreference(QFont::PreferNoHinting);
    f.setPixelSize(200);
    return f;
}

} // namespace

void pinta_pagina(QPainter &p, const PaginaSistema &pagina, double pxPorMm, bool contorno) {
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    if (contorno) {
        p.setPen(QPen(QColor(170, 170, 170), 0.3 * pxPorMm));
        const QRectF c = pagina.Cheque;
        p.drawRect(
            QRectF(c.x() * pxPorMm, c.y() * pxPorMm, c.width() * pxPorMm, c.height() * pxPorMm));
        const double faixa = c.y() + (AlturaCheque - FaixaMagnetica) * pagina.EscalaY;
        p.fillRect(QRectF(c.x() * pxPorMm, faixa * pxPorMm, c.width() * pxPorMm,
                          FaixaMagnetica * pagina.EscalaY * pxPorMm),
                   QColor(235, 235, 235));
    }
    p.setPen(QPen(Qt::black, 0.15 * pxPorMm));
    for (const TracoPagina &t : pagina.Tracos)
        p.drawLine(QPointF(t.X1 * pxPorMm, t.Y1 * pxPorMm),
                   QPointF(t.X2 * pxPorMm, t.Y2 * pxPorMm));

    const QFont f = fonte();
    p.setFont(f);
    const QFontMetricsF fm(f, p.device());
    const double avanco = fm.horizontalAdvance(QString(100, u'M')) / 100;
    const double escala = pagina.Passo * pxPorMm / avanco;
    for (const EscritoPagina &e : pagina.Escritos) {
        p.save();
        p.translate(e.X * pxPorMm, e.Y * pxPorMm);
        p.scale(escala * pagina.EscalaX, escala * pagina.EscalaY);
        p.drawText(QPointF(0, 0), e.Texto);
        p.restore();
    }
    p.restore();
}

int imprime_sistema(const TrabalhoSistema &trabalho) {
    QPrinter impressora(QPrinter::HighResolution);
    if (trabalho.ArquivoPdf.isEmpty()) {
        const QPrinterInfo info = trabalho.Impressora.isEmpty()
                                      ? QPrinterInfo::defaultPrinter()
                                      : QPrinterInfo::printerInfo(trabalho.Impressora);
        if (info.isNull()) return 482;
        impressora.setPrinterName(info.printerName());
    } else {
        impressora.setOutputFormat(QPrinter::PdfFormat);
        impressora.setOutputFileName(trabalho.ArquivoPdf);
    }
    impressora.setDocName(trabalho.Titulo);
    impressora.setFullPage(true);
    // A page size is kept upright; a sheet wider than tall is that size turned.
    const auto tamanho = [&](const PaginaSistema &p) {
        const QPageSize folha(QSizeF(qMin(p.Largura, p.Altura), qMax(p.Largura, p.Altura)),
                              QPageSize::Millimeter, QString(), QPageSize::ExactMatch);
        impressora.setPageLayout(QPageLayout(
            folha, p.Largura > p.Altura ? QPageLayout::Landscape : QPageLayout::Portrait,
            QMarginsF(0, 0, 0, 0), QPageLayout::Millimeter));
    };
    if (trabalho.Paginas.isEmpty()) return 0;
    tamanho(trabalho.Paginas.first());
    QPainter p;
    if (!p.begin(&impressora)) return 1;
    const double pxPorMm = impressora.resolution() / 25.4;
    for (qsizetype i = 0; i < trabalho.Paginas.size(); ++i) {
        if (i > 0) {
            tamanho(trabalho.Paginas[i]);
            if (!impressora.newPage()) return p.end(), 1;
        }
        pinta_pagina(p, trabalho.Paginas[i], pxPorMm, false);
    }
    return p.end() ? 0 : 1;
}

QStringList impressoras_sistema() {
    return QPrinterInfo::availablePrinterNames();
}

} // namespace vexa

#include "reports/planilha.h"
#include "reports/andamento.h"

#include "core/arquivo.h"
#include "core/conversoes.h"
#include "reports/arquivo_relatorio.h"
#include "store/consulta_log.h"
#include "store/recordset.h"

#include <QDate>
#include <QStringBuilder>
#include <QtEndian>
#include <zlib.h>

namespace vexa {

namespace {

QString texto_centavos(qint64 c, QChar separador) {
    const QString sinal = c < 0 ? QStringLiteral("-") : QString();
    c = qAbs(c);
    return sinal % QString::number(c / 100) % separador %
           QStringLiteral("%1").arg(c % 100, 2, 10, QLatin1Char('0'));
}

std::optional<QDate> data_de(const QString &texto) {
    if (texto.trimmed().isEmpty()) return std::nullopt;
    const auto d = le_data(texto.trimmed());
    if (!d || !d->isValid()) return std::nullopt;
    return d;
}

QString campo_csv(const QString &t) {
    if (!t.contains(u';') && !t.contains(u'"') && !t.contains(u'\n') && !t.contains(u'\r'))
        return t;
    return u'"' % QString(t).replace(u'"', QStringLiteral("\"\"")) % u'"';
}

QString xml(const QString &t) {
    return t.toHtmlEscaped();
}

void poe16(QByteArray &b, quint16 v) {
    char c[2];
    qToLittleEndian(v, c);
    b.append(c, 2);
}
void poe32(QByteArray &b, quint32 v) {
    char c[4];
    qToLittleEndian(v, c);
    b.append(c, 4);
}

const char *ConteudoInicio =
    R"(<?xml version="1.0" encoding="UTF-8"?>
<office:document-content xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0" xmlns:style="urn:oasis:names:tc:opendocument:xmlns:style:1.0" xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0" xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0" xmlns:fo="urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0" xmlns:number="urn:oasis:names:tc:opendocument:xmlns:datastyle:1.0" office:version="1.2">
<office:automatic-styles>
<number:date-style style:name="N1"><number:day number:style="long"/><number:text>/</number:text><number:month number:style="long"/><number:text>/</number:text><number:year number:style="long"/></number:date-style>
<number:number-style style:name="N2" number:language="pt" number:country="BR"><number:number number:decimal-places="2" number:min-decimal-places="2" number:min-integer-digits="1"/></number:number-style>
<style:style style:name="data" style:family="table-cell" style:data-style-name="N1"/>
<style:style style:name="valor" style:family="table-cell" style:data-style-name="N2"/>
<style:style style:name="titulo" style:family="table-cell"><style:text-properties fo:font-weight="bold"/></style:style>
</office:automatic-styles>
<office:body><office:spreadsheet><table:table table:name="Cheques">
<table:table-column table:number-columns-repeated="8"/>
)";

} // namespace

const QStringList &campos_planilha() {
    static const QStringList c = {"StCancel", "NRCH",  "Banco", "V_CH",
                                  "Data",     "Favor", "Local", "Comentario"};
    return c;
}

const QStringList &titulos_planilha() {
    static const QStringList t = {"Situação", "Nº",         "Banco",  "Valor",
                                  "Data",     "Favorecido", "Cidade", "Comentário"};
    return t;
}

QStringList celulas_planilha(const QStringList &c) {
    QStringList r = c;
    r[ColunaLog::Situacao] = c.value(ColunaLog::Situacao) == "C" ? QStringLiteral("Cancelado")
                                                                 : QStringLiteral("Emitido");
    const auto v = centavos(c.value(ColunaLog::Valor));
    r[ColunaLog::Valor] = v ? texto_centavos(*v, u',') : c.value(ColunaLog::Valor);
    const auto d = data_de(c.value(ColunaLog::DataLog));
    r[ColunaLog::DataLog] = d ? d->toString("dd/MM/yyyy") : c.value(ColunaLog::DataLog).trimmed();
    for (QString &t : r)
        t = t.trimmed();
    return r;
}

std::optional<QByteArray> csv_planilha(const QList<QStringList> &linhas, Progresso *p) {
    QString texto;
    texto.reserve(128 + linhas.size() * 96);
    const auto linha = [&texto](const QStringList &cs) {
        for (int i = 0; i < cs.size(); ++i) {
            if (i) texto += u';';
            texto += campo_csv(cs[i]);
        }
        texto += QStringLiteral("\r\n");
    };
    linha(titulos_planilha());
    for (qsizetype i = 0; i < linhas.size(); ++i) {
        if (!segue(p, i)) return std::nullopt;
        linha(celulas_planilha(linhas[i]));
    }
    return QByteArray("\xEF\xBB\xBF") + texto.toUtf8();
}

std::optional<QByteArray> ods_planilha(const QList<QStringList> &linhas, Progresso *p) {
    // Each row goes into the file's bytes as soon as it is made, so that a register of years
    // never stands in memory as one text twice the size of the file.
    QByteArray conteudo;
    conteudo.reserve(4096 + linhas.size() * 360);
    QString x = QString::fromUtf8(ConteudoInicio);
    x += QStringLiteral("<table:table-row>");
    for (const QString &titulo : titulos_planilha())
        x +=
            u"<table:table-cell table:style-name=\"titulo\" office:value-type=\"string\"><text:p>" %
            xml(titulo) % u"</text:p></table:table-cell>";
    x += QStringLiteral("</table:table-row>\n");
    const auto texto = [&x](const QString &t) {
        if (t.isEmpty()) return void(x += QStringLiteral("<table:table-cell/>"));
        x += u"<table:table-cell office:value-type=\"string\"><text:p>" % xml(t) %
             u"</text:p></table:table-cell>";
    };
    for (qsizetype i = 0; i < linhas.size(); ++i) {
        if (!segue(p, i)) return std::nullopt;
        const QStringList c = celulas_planilha(linhas[i]);
        x += QStringLiteral("<table:table-row>");
        texto(c[ColunaLog::Situacao]);
        texto(c[ColunaLog::Numero]);
        texto(c[ColunaLog::BancoLog]);
        if (const auto v = centavos(linhas[i].value(ColunaLog::Valor)))
            x += u"<table:table-cell table:style-name=\"valor\" office:value-type=\"float\" "
                 u"office:value=\"" %
                 texto_centavos(*v, u'.') % u"\"><text:p>" % c[ColunaLog::Valor] %
                 u"</text:p></table:table-cell>";
        else
            texto(c[ColunaLog::Valor]);
        if (const auto d = data_de(linhas[i].value(ColunaLog::DataLog)))
            x += u"<table:table-cell table:style-name=\"data\" office:value-type=\"date\" "
                 u"office:date-value=\"" %
                 d->toString(Qt::ISODate) % u"\"><text:p>" % c[ColunaLog::DataLog] %
                 u"</text:p></table:table-cell>";
        else
            texto(c[ColunaLog::DataLog]);
        texto(c[ColunaLog::Favorecido]);
        texto(c[ColunaLog::Cidade]);
        texto(c[ColunaLog::Comentario]);
        x += QStringLiteral("</table:table-row>\n");
        conteudo += x.toUtf8();
        x.resize(0);
    }
    x += QStringLiteral(
        "</table:table></office:spreadsheet></office:body></office:document-content>\n");
    conteudo += x.toUtf8();
    const QByteArray manifesto =
        R"(<?xml version="1.0" encoding="UTF-8"?>
<manifest:manifest xmlns:manifest="urn:oasis:names:tc:opendocument:xmlns:manifest:1.0" manifest:version="1.2">
<manifest:file-entry manifest:full-path="/" manifest:version="1.2" manifest:media-type="application/vnd.oasis.opendocument.spreadsheet"/>
<manifest:file-entry manifest:full-path="content.xml" manifest:media-type="text/xml"/>
</manifest:manifest>
)";
    return zip_guardado({{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"},
                         {"META-INF/manifest.xml", manifesto},
                         {"content.xml", conteudo}});
}

QByteArray zip_guardado(const QList<QPair<QString, QByteArray>> &entradas) {
    QByteArray zip, central;
    // 1 January 1980, the first day a zip can name.
    const quint16 hora = 0, dia = (0 << 9) | (1 << 5) | 1;
    for (const auto &[nome, dados] : entradas) {
        const QByteArray n = nome.toUtf8();
        const quint32 crc =
            quint32(crc32(crc32(0, nullptr, 0), reinterpret_cast<const Bytef *>(dados.constData()),
                          uInt(dados.size())));
        const quint32 inicio = quint32(zip.size());
        const auto cabeca = [&](QByteArray &b, bool doCentral) {
            poe32(b, doCentral ? 0x02014b50 : 0x04034b50);
            if (doCentral) poe16(b, 20); // made by
            poe16(b, 20);                // needed to extract
            poe16(b, 0x0800);            // names in UTF-8
            poe16(b, 0);                 // stored
            poe16(b, hora);
            poe16(b, dia);
            poe32(b, crc);
            poe32(b, quint32(dados.size()));
            poe32(b, quint32(dados.size()));
            poe16(b, quint16(n.size()));
            poe16(b, 0); // extra field
            if (doCentral) {
                poe16(b, 0); // comment
                poe16(b, 0); // disk
                poe16(b, 0); // internal attributes
                poe32(b, 0); // external attributes
                poe32(b, inicio);
            }
            b += n;
        };
        cabeca(zip, false);
        zip += dados;
        cabeca(central, true);
    }
    const quint32 inicioCentral = quint32(zip.size());
    zip += central;
    poe32(zip, 0x06054b50);
    poe16(zip, 0);
    poe16(zip, 0);
    poe16(zip, quint16(entradas.size()));
    poe16(zip, quint16(entradas.size()));
    poe32(zip, quint32(central.size()));
    poe32(zip, inicioCentral);
    poe16(zip, 0);
    return zip;
}

void exporta_planilha(Desktop &d, const RecordSet &linhas, FormatoPlanilha formato) {
    const bool ods = formato == FormatoPlanilha::Ods;
    if (!linhas.Aberto() || linhas.RecordCount() == 0) {
        d.MsgBox("Não há cheques na lista para exportar.", Botoes::OK, "Exportar Planilha",
                 Icone::Exclamacao);
        return;
    }
    const QString caminho = pede_arquivo(
        d, "Exportar Planilha", ods ? "Planilha OpenDocument (*.ods)" : "Planilha CSV (*.csv)",
        ods ? "ods" : "csv");
    if (caminho.isEmpty()) return;
    std::optional<QByteArray> conteudo;
    {
        const auto p = d.AbreProgresso("Exportar Planilha");
        p->Etapa("Exportando " + QString::number(linhas.RecordCount()) + " cheques para \"" +
                     caminho + "\"...",
                 linhas.RecordCount());
        const QList<QStringList> valores = linhas.Colunas(campos_planilha());
        if (valores.size() != linhas.RecordCount()) {
            d.MsgBox("Não foi possível ler o registro de cheques para exportar.", Botoes::OK,
                     "Erro", Icone::Exclamacao);
            return;
        }
        conteudo = ods ? ods_planilha(valores, p.get()) : csv_planilha(valores, p.get());
    }
    // Cancelled: nothing was written.
    if (!conteudo) return;
    if (!grava_inteiro(caminho, *conteudo)) return avisa_arquivo_nao_gravado(d, caminho);
    d.MsgBox("A planilha foi gravada em \"" + caminho + "\".", Botoes::OK, "Exportar Planilha",
             Icone::Informacao);
}

} // namespace vexa

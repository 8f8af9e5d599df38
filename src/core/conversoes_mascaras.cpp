// Format: one entry for every mask the program uses, handed to the reader of its kind. The
// text masks ("@@/@@/@@", "!@@@@@@@@") are read here.
#include "core/conversoes.h"
#include "core/conversoes_interno.h"

#include <QRegularExpression>

namespace vexa {

namespace {

QString formata_mascara_texto(const QString &texto, const QString &mascara) {
    const bool daEsquerda = mascara.startsWith(u'!');
    const QString m = daEsquerda ? mascara.mid(1) : mascara;
    QString saida;
    if (daEsquerda) {
        qsizetype pos = 0;
        for (const QChar c : m) {
            if (c == u'@')
                saida += pos < texto.size() ? texto[pos++] : QChar(u' ');
            else if (c == u'&') {
                if (pos < texto.size()) saida += texto[pos++];
            } else
                saida += c;
        }
        return saida;
    }
    qsizetype pos = texto.size();
    for (qsizetype i = m.size() - 1; i >= 0; --i) {
        const QChar c = m[i];
        if (c == u'@')
            saida.prepend(pos > 0 ? texto[--pos] : QChar(u' '));
        else if (c == u'&') {
            if (pos > 0) saida.prepend(texto[--pos]);
        } else
            saida.prepend(c);
    }
    return texto.left(pos) + saida;
}

} // namespace

QString Format(const QString &valor, const QString &mascara) {
    if (mascara.contains(u'@') || mascara.contains(u'&'))
        return formata_mascara_texto(valor, mascara);
    static const QRegularExpression numero("^[0#,.]+$");
    static const QRegularExpression data("[dDmMyY]");
    if (numero.match(mascara).hasMatch()) return formata_mascara_numero(valor, mascara);
    if (data.match(mascara).hasMatch()) return formata_mascara_data(valor, mascara);
    return valor;
}

} // namespace vexa

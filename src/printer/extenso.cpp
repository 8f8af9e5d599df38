#include "printer/extenso.h"

#include <QStringList>

namespace vexa {

namespace {

const char *const ate_dezenove[] = {"",       "Um",        "Dois",      "Três",    "Quatro",
                                    "Cinco",  "Seis",      "Sete",      "Oito",    "Nove",
                                    "Dez",    "Onze",      "Doze",      "Treze",   "Quatorze",
                                    "Quinze", "Dezesseis", "Dezessete", "Dezoito", "Dezenove"};
const char *const dezenas[] = {"",          "",         "Vinte",   "Trinta",  "Quarenta",
                               "Cinquenta", "Sessenta", "Setenta", "Oitenta", "Noventa"};
const char *const centenas[] = {
    "",           "Cento",      "Duzentos",   "Trezentos",  "Quatrocentos",
    "Quinhentos", "Seiscentos", "Setecentos", "Oitocentos", "Novecentos"};

// One group of three digits, 1 to 999.
QString grupo(int n) {
    if (n == 100) return QStringLiteral("Cem");
    QStringList partes;
    if (n / 100) partes << QString::fromUtf8(centenas[n / 100]);
    const int resto = n % 100;
    if (resto > 0 && resto < 20) {
        partes << QString::fromUtf8(ate_dezenove[resto]);
    } else if (resto >= 20) {
        partes << QString::fromUtf8(dezenas[resto / 10]);
        if (resto % 10) partes << QString::fromUtf8(ate_dezenove[resto % 10]);
    }
    return partes.join(QStringLiteral(" e "));
}

// Each word of a currency name with a capital first letter, but "e" and "de", which stay in
// lower case as they do in the rest of the words.
QString maiusculas_iniciais(const QString &nome) {
    QStringList palavras = nome.simplified().split(u' ', Qt::SkipEmptyParts);
    for (QString &p : palavras)
        if (p != u"e" && p != u"de") p[0] = p[0].toUpper();
    return palavras.join(u' ');
}

} // namespace

QString extenso(qint64 centavos, const QString &singular, const QString &plural) {
    if (centavos <= 0 || centavos > ExtensoMaximo) return {};
    const qint64 inteiros = centavos / 100;
    const int fracao = int(centavos % 100);

    struct Classe {
        int valor;
        QString texto;
    };
    QList<Classe> classes;
    const int bilhoes = int(inteiros / 1000000000);
    const int milhoes = int(inteiros / 1000000 % 1000);
    const int milhares = int(inteiros / 1000 % 1000);
    const int unidades = int(inteiros % 1000);
    if (bilhoes)
        classes.append({bilhoes, grupo(bilhoes) + (bilhoes == 1 ? " Bilhão" : " Bilhões")});
    if (milhoes)
        classes.append({milhoes, grupo(milhoes) + (milhoes == 1 ? " Milhão" : " Milhões")});
    if (milhares)
        classes.append(
            {milhares, milhares == 1 ? QStringLiteral("Mil") : grupo(milhares) + " Mil"});
    if (unidades) classes.append({unidades, grupo(unidades)});

    QString texto;
    for (qsizetype i = 0; i < classes.size(); ++i) {
        if (i > 0) {
            // The last class joins with "e" when it is below one hundred or a round hundred.
            const int v = classes[i].valor;
            const bool ultima = i == classes.size() - 1;
            texto += ultima && (v < 100 || v % 100 == 0) ? " e " : ", ";
        }
        texto += classes[i].texto;
    }
    if (inteiros > 0) {
        if (inteiros >= 1000000 && milhares == 0 && unidades == 0) texto += " de";
        texto += " " + maiusculas_iniciais(inteiros == 1 ? singular : plural);
    }
    if (fracao) {
        const QString cents = grupo(fracao) + (fracao == 1 ? " Centavo" : " Centavos");
        texto = texto.isEmpty() ? cents : texto + " e " + cents;
    }
    return texto;
}

} // namespace vexa

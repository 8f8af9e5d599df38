// Amounts: the exact decimal behind every amount shown, the number masks, the typed amount
// in the Brazilian format, and Val for texts of digits.
#include "core/conversoes.h"
#include "core/conversoes_interno.h"

#include <algorithm>
#include <cmath>

namespace vexa {

namespace {

// An exact decimal: digitos × 10^-escala. Amounts never pass through a binary fraction on
// their way to the screen, so 2.675 rounds to 2,68.
struct Decimal {
    bool negativo = false;
    QString digitos; // at least one digit
    int escala = 0;  // digits after the decimal point
};

// A number in invariant form: sign, digits, point, digits, exponent.
std::optional<Decimal> le_invariante(const QString &texto) {
    const QString t = texto.trimmed();
    Decimal d;
    qsizetype i = 0;
    if (i < t.size() && (t[i] == u'-' || t[i] == u'+')) d.negativo = t[i++] == u'-';
    bool ponto = false;
    for (; i < t.size(); ++i) {
        if (eh_digito(t[i])) {
            d.digitos += t[i];
            if (ponto) ++d.escala;
        } else if (t[i] == u'.' && !ponto) {
            ponto = true;
        } else {
            break;
        }
    }
    if (d.digitos.isEmpty()) return std::nullopt;
    if (i < t.size() && (t[i] == u'e' || t[i] == u'E')) {
        ++i;
        bool expNegativo = false;
        if (i < t.size() && (t[i] == u'-' || t[i] == u'+')) expNegativo = t[i++] == u'-';
        int exp = 0;
        const qsizetype inicio = i;
        for (; i < t.size() && eh_digito(t[i]); ++i) {
            exp = exp * 10 + (t[i].unicode() - u'0');
            if (exp > 400) return std::nullopt;
        }
        if (i == inicio) return std::nullopt;
        d.escala += expNegativo ? exp : -exp;
    }
    if (i != t.size()) return std::nullopt;
    if (d.escala < 0) {
        d.digitos += QString(-d.escala, u'0');
        d.escala = 0;
    }
    return d;
}

// Where a text without a comma ends in a point and one or two digits ("1234.56", "0.5"),
// that point: the operator typed the decimals after it. -1 otherwise.
qsizetype ponto_decimal(const QString &t) {
    if (t.contains(u',')) return -1;
    const qsizetype ponto = t.lastIndexOf(u'.');
    const qsizetype decimais = t.size() - ponto - 1;
    if (ponto < 0 || decimais < 1 || decimais > 2) return -1;
    for (qsizetype i = ponto + 1; i < t.size(); ++i)
        if (!eh_digito(t[i])) return -1;
    return ponto;
}

// A typed number by the Brazilian format (see eh_numerico).
std::optional<Decimal> le_brasileiro(const QString &texto) {
    const QString t = texto.trimmed();
    const qsizetype decimal = ponto_decimal(t);
    Decimal d;
    qsizetype i = 0;
    if (i < t.size() && (t[i] == u'-' || t[i] == u'+')) d.negativo = t[i++] == u'-';
    if (t.mid(i).startsWith(QLatin1String("R$"))) {
        i += 2;
        while (i < t.size() && t[i].isSpace())
            ++i;
    }
    for (; i < t.size(); ++i) {
        if (eh_digito(t[i]))
            d.digitos += t[i];
        else if (i == decimal)
            break;
        else if (t[i] == u'.' && i > 0 && eh_digito(t[i - 1]) && i + 1 < t.size() &&
                 eh_digito(t[i + 1]))
            continue;
        else
            break;
    }
    if (i < t.size() && (t[i] == u',' || i == decimal)) {
        for (++i; i < t.size() && eh_digito(t[i]); ++i) {
            d.digitos += t[i];
            ++d.escala;
        }
    }
    if (i != t.size() || d.digitos.isEmpty()) return std::nullopt;
    return d;
}

// Rounds half away from zero to `casas` decimals; the result has exactly `casas` decimals
// and at least one whole digit.
Decimal arredonda(Decimal d, int casas) {
    if (d.digitos.size() <= d.escala)
        d.digitos = QString(d.escala - d.digitos.size() + 1, u'0') + d.digitos;
    if (d.escala <= casas) {
        d.digitos += QString(casas - d.escala, u'0');
        d.escala = casas;
        return d;
    }
    const qsizetype corte = d.digitos.size() - (d.escala - casas);
    const bool sobe = d.digitos[corte] >= u'5';
    QString mantidos = d.digitos.left(corte);
    if (sobe) {
        qsizetype j = mantidos.size() - 1;
        while (j >= 0 && mantidos[j] == u'9')
            mantidos[j--] = u'0';
        if (j < 0)
            mantidos.prepend(u'1');
        else
            mantidos[j] = QChar(mantidos[j].unicode() + 1);
    }
    d.digitos = mantidos;
    d.escala = casas;
    return d;
}

QString texto_invariante(const Decimal &d) {
    QString inteiro = d.digitos.left(d.digitos.size() - d.escala);
    if (inteiro.isEmpty()) inteiro = "0";
    QString s = (d.negativo ? "-" : "") + inteiro;
    if (d.escala > 0)
        s += "." + QString(qMax<qsizetype>(0, d.escala - d.digitos.size()), u'0') +
             d.digitos.right(qMin<qsizetype>(d.escala, d.digitos.size()));
    return s;
}

} // namespace

QString formata_mascara_numero(const QString &valor, const QString &mascara) {
    const std::optional<Decimal> lido = le_invariante(valor);
    if (!lido) return valor;

    const qsizetype ponto = mascara.indexOf(u'.');
    const QString parteInteira = ponto < 0 ? mascara : mascara.left(ponto);
    const QString parteDecimal = ponto < 0 ? QString() : mascara.mid(ponto + 1);
    const bool agrupa = parteInteira.contains(u',');

    // Whole digits always shown: every placeholder from the first "0" on.
    QString lugaresInteiros = parteInteira;
    lugaresInteiros.remove(u',');
    const qsizetype primeiroZero = lugaresInteiros.indexOf(u'0');
    const int minimoInteiro = primeiroZero < 0 ? 0 : int(lugaresInteiros.size() - primeiroZero);
    // Decimals: all placeholders are rounded to; those up to the last "0" are always shown.
    QString lugaresDecimais = parteDecimal;
    lugaresDecimais.remove(u',');
    const int casas = int(lugaresDecimais.size());
    const int minimoDecimal = int(lugaresDecimais.lastIndexOf(u'0') + 1);

    const Decimal d = arredonda(*lido, casas);
    QString inteiro = d.digitos.left(d.digitos.size() - casas);
    QString decimais = d.digitos.right(casas);
    const bool zero =
        std::all_of(d.digitos.begin(), d.digitos.end(), [](QChar c) { return c == u'0'; });

    while (!inteiro.isEmpty() && inteiro[0] == u'0')
        inteiro.remove(0, 1);
    if (inteiro.size() < minimoInteiro)
        inteiro.prepend(QString(minimoInteiro - inteiro.size(), u'0'));
    while (decimais.size() > minimoDecimal && decimais.endsWith(u'0'))
        decimais.chop(1);

    if (agrupa)
        for (qsizetype p = inteiro.size() - 3; p > 0; p -= 3)
            inteiro.insert(p, u'.');

    QString s = (d.negativo && !zero) ? "-" : "";
    s += inteiro;
    if (ponto >= 0) s += u',' + decimais;
    return s;
}

double Val(const QString &texto) {
    QString numero;
    bool ponto = false, expoente = false, digito = false, digitoNoExpoente = false;
    for (const QChar c : texto) {
        if (c == u' ' || c == u'\t' || c == u'\n') continue;
        const QChar ultimo = numero.isEmpty() ? QChar() : numero.back();
        if (eh_digito(c)) {
            numero += c;
            digito = true;
            if (expoente) digitoNoExpoente = true;
        } else if ((c == u'-' || c == u'+') &&
                   (numero.isEmpty() || (expoente && ultimo.toLower() == u'e'))) {
            numero += c;
        } else if (c == u'.' && !ponto && !expoente) {
            ponto = true;
            numero += c;
        } else if ((c.toLower() == u'e' || c.toLower() == u'd') && !expoente && digito) {
            expoente = true;
            numero += u'e';
        } else {
            break;
        }
    }
    if (expoente && !digitoNoExpoente) numero.truncate(numero.indexOf(u'e'));
    bool ok = false;
    const double v = numero.toDouble(&ok);
    return ok && std::isfinite(v) ? v : 0.0;
}

bool eh_numerico(const QString &texto) {
    return le_brasileiro(texto).has_value();
}

std::optional<qint64> centavos(const QString &texto) {
    const std::optional<Decimal> lido = le_brasileiro(texto);
    if (!lido) return std::nullopt;
    const Decimal d = arredonda(*lido, 2);
    QString digitos = d.digitos;
    while (digitos.size() > 1 && digitos[0] == u'0')
        digitos.remove(0, 1);
    if (digitos.size() > 18) return std::nullopt;
    const qint64 v = digitos.toLongLong();
    return d.negativo ? -v : v;
}

double valor_numerico(const QString &texto) {
    const std::optional<Decimal> lido = le_brasileiro(texto);
    if (!lido) return 0.0;
    const double v = texto_invariante(*lido).toDouble();
    return std::isfinite(v) ? v : 0.0;
}

QString formata_centavos(qint64 centavos, const QString &mascara) {
    const bool negativo = centavos < 0;
    const quint64 absoluto = negativo ? quint64(0) - quint64(centavos) : quint64(centavos);
    const QString texto = QStringLiteral("%1%2.%3")
                              .arg(negativo ? "-" : "")
                              .arg(absoluto / 100)
                              .arg(absoluto % 100, 2, 10, QChar(u'0'));
    return Format(texto, mascara);
}

QString formata_numero(double valor, const QString &mascara) {
    return Format(QString::number(valor, 'g', 15), mascara);
}
QString mascara_valor(const QString &texto, const QString &mascara) {
    const auto valor = centavos(texto);
    return valor ? formata_centavos(*valor, mascara) : Format(texto, mascara);
}

} // namespace vexa

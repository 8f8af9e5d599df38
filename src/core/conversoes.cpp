#include "core/conversoes.h"

#include "core/relogio.h"

#include <QRegularExpression>
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace vexa {

namespace {

// Characters 0x80 to 0x9F of Windows-1252. The five free codes keep their own number.
constexpr std::array<char16_t, 32> ansi_80_9f = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

int codigo_ansi(char16_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return c;
    for (int i = 0; i < int(ansi_80_9f.size()); ++i)
        if (ansi_80_9f[i] == c) return 0x80 + i;
    return '?';
}

struct Conversao {
    int ansi;
    int impressora;
};

// The accented letters and signs the printer's code page places elsewhere.
constexpr std::array<Conversao, 61> tabela_impressora = {{
    {0xC0, 183}, {0xC1, 181}, {0xC2, 182}, {0xC3, 199}, {0xC4, 142}, {0xC7, 128}, {0xC8, 212},
    {0xC9, 144}, {0xCA, 210}, {0xCB, 211}, {0xCC, 222}, {0xCD, 214}, {0xCE, 215}, {0xCF, 216},
    {0xD1, 165}, {0xD2, 227}, {0xD3, 224}, {0xD4, 226}, {0xD5, 229}, {0xD6, 153}, {0xB0, 248},
    {0xD9, 235}, {0xDA, 233}, {0xDB, 234}, {0xDC, 154}, {0xDD, 237}, {0xE0, 133}, {0xE1, 160},
    {0xE2, 131}, {0xE3, 198}, {0xE4, 132}, {0xE7, 135}, {0xE8, 138}, {0xE9, 130}, {0xEA, 136},
    {0xEB, 137}, {0xEC, 141}, {0xED, 161}, {0xA3, 156}, {0xAC, 170}, {0xAA, 166}, {0xEE, 140},
    {0xEF, 139}, {0xF1, 164}, {0xF2, 149}, {0xF3, 162}, {0xF4, 147}, {0xF5, 228}, {0xF6, 148},
    {0xF9, 151}, {0xFA, 163}, {0xFB, 150}, {0xFC, 129}, {0xFD, 236}, {0xFF, 152}, {0xB9, 251},
    {0xB2, 253}, {0xB3, 252}, {0xA2, 189}, {0xA7, 245}, {0xBA, 167},
}};

// An exact decimal: digitos × 10^-escala. Amounts never pass through a binary fraction on
// their way to the screen, so 2.675 rounds to 2,68.
struct Decimal {
    bool negativo = false;
    QString digitos; // at least one digit
    int escala = 0;  // digits after the decimal point
};

bool eh_digito(QChar c) {
    return c >= u'0' && c <= u'9';
}

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

// A typed number by the Brazilian format (see eh_numerico).
std::optional<Decimal> le_brasileiro(const QString &texto) {
    const QString t = texto.trimmed();
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
        else if (t[i] == u'.' && i > 0 && eh_digito(t[i - 1]) && i + 1 < t.size() &&
                 eh_digito(t[i + 1]))
            continue;
        else
            break;
    }
    if (i < t.size() && t[i] == u',') {
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

QString formata_mascara_data(const QString &valor, const QString &mascara) {
    const std::optional<QDate> data = le_data(valor);
    if (!data) return valor;
    QString saida;
    for (qsizetype i = 0; i < mascara.size();) {
        const QChar c = mascara[i].toLower();
        qsizetype n = 1;
        while (i + n < mascara.size() && mascara[i + n].toLower() == c)
            ++n;
        if (c == u'd')
            saida += n == 1 ? QString::number(data->day()) : QString::asprintf("%02d", data->day());
        else if (c == u'm')
            saida +=
                n == 1 ? QString::number(data->month()) : QString::asprintf("%02d", data->month());
        else if (c == u'y')
            saida += n >= 4 ? QString::asprintf("%04d", data->year())
                            : QString::asprintf("%02d", data->year() % 100);
        else
            saida += QString(n, mascara[i]);
        i += n;
    }
    return saida;
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

bool DataValida(const QString &Data) {
    const double dia = Val(Data.mid(0, 2));
    const double mes = Val(Data.mid(2, 2));
    const double ano = Val(Data.mid(4, 4));
    if (dia < 1 || mes < 1 || mes > 12 || mes != std::floor(mes)) return false;
    int maximo = 31;
    switch (int(mes)) {
    case 4:
    case 6:
    case 9:
    case 11:
        maximo = 30;
        break;
    case 2:
        maximo = (ano == 0 || std::fmod(ano, 4.0) == 0) ? 29 : 28;
        break;
    default:
        break;
    }
    return dia <= maximo;
}

QString MesExtenso(const QString &Mes) {
    static const QStringList nomes = {"Janeiro",  "Fevereiro", "Março",    "Abril",
                                      "Maio",     "Junho",     "Julho",    "Agosto",
                                      "Setembro", "Outubro",   "Novembro", "Dezembro"};
    for (int i = 0; i < nomes.size(); ++i)
        if (Mes == QString::number(i + 1)) return nomes[i];
    return "ERRO";
}

namespace {
QString apara_direita(const QString &s) {
    qsizetype n = s.size();
    while (n > 0 && s[n - 1] == u' ')
        --n;
    return s.left(n);
}
} // namespace

QPair<QString, QString> QuebraExtenso(const QString &ValorExtenso) {
    // The words as the printer hands them end at their zero character.
    const QString texto = ValorExtenso.left(ValorExtenso.indexOf(QChar(0))).trimmed();
    if (texto.size() < 80) return {texto, QString()};
    qsizetype n = qMin<qsizetype>(81, texto.size());
    while (n > 0 && texto[n - 1] != u' ')
        --n;
    // Words with no blank in reach are broken at 80 characters rather than never.
    if (n == 0) n = 80;
    return {apara_direita(texto.left(n)), apara_direita(texto.mid(n))};
}

int CodigoImpressora(int codigo) {
    for (const Conversao &c : tabela_impressora)
        if (c.ansi == codigo) return c.impressora;
    return 65535;
}

QString ConverteTexto(const QString &Texto) {
    QString saida;
    saida.reserve(Texto.size());
    for (const QChar c : Texto) {
        const int codigo = CodigoImpressora(codigo_ansi(c.unicode()));
        if (codigo == 65535)
            saida += c;
        else
            saida += de_ansi(QByteArray(1, char(codigo & 0xFF)));
    }
    return saida;
}

QByteArray para_ansi(const QString &texto) {
    QByteArray bytes;
    bytes.reserve(texto.size());
    for (qsizetype i = 0; i < texto.size(); ++i) {
        const QChar c = texto[i];
        if (c.isHighSurrogate() && i + 1 < texto.size() && texto[i + 1].isLowSurrogate()) ++i;
        bytes += char(c.isSurrogate() ? '?' : codigo_ansi(c.unicode()));
    }
    return bytes;
}

QString de_ansi(const QByteArray &bytes) {
    QString texto;
    texto.reserve(bytes.size());
    for (const char b : bytes) {
        const auto u = static_cast<unsigned char>(b);
        texto += (u >= 0x80 && u < 0xA0) ? QChar(ansi_80_9f[u - 0x80]) : QChar(u);
    }
    return texto;
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

QString data_curta(const QString &texto, const QString &MesAno) {
    if (texto.size() == 1 || texto.size() == 2) return formata_numero(Val(texto), "00") + MesAno;
    if (texto.size() >= 7) return texto.mid(0, 2) + texto.mid(3, 2) + texto.mid(6, 2);
    return texto;
}

std::optional<QDate> le_data(const QString &texto) {
    // Read by hand, not by pattern: the purge of the register reads every row's date.
    const QString t = texto.trimmed();
    QList<QStringView> grupos;
    QString separadores;
    qsizetype inicio = 0;
    for (qsizetype i = 0; i <= t.size(); ++i) {
        if (i < t.size() && eh_digito(t[i])) continue;
        if (i == inicio) return std::nullopt; // an empty group, or a stray character
        grupos.append(QStringView(t).mid(inicio, i - inicio));
        if (i < t.size()) {
            if (t[i] != u'/' && t[i] != u'.' && t[i] != u'-') return std::nullopt;
            separadores += t[i];
        }
        inicio = i + 1;
    }
    QStringView dia, mes, ano;
    bool anoCompleto = false;
    if (grupos.size() == 1 && (t.size() == 6 || t.size() == 8)) {
        dia = grupos[0].mid(0, 2);
        mes = grupos[0].mid(2, 2);
        ano = grupos[0].mid(4);
    } else if (grupos.size() == 3 && grupos[0].size() == 4 && separadores == u"--" &&
               grupos[1].size() <= 2 && grupos[2].size() <= 2) {
        ano = grupos[0];
        mes = grupos[1];
        dia = grupos[2];
        anoCompleto = true;
    } else if (grupos.size() == 3 && grupos[0].size() <= 2 && grupos[1].size() <= 2 &&
               (grupos[2].size() <= 2 || grupos[2].size() == 4)) {
        dia = grupos[0];
        mes = grupos[1];
        ano = grupos[2];
    } else {
        return std::nullopt;
    }
    const int numeroAno = ano.toInt();
    const QDate data(anoCompleto || ano.size() == 4 ? numeroAno : ano_completo(numeroAno),
                     mes.toInt(), dia.toInt());
    if (!data.isValid()) return std::nullopt;
    return data;
}

std::optional<qint64> dias_entre(const QString &de, const QString &ate) {
    const std::optional<QDate> a = le_data(de);
    const std::optional<QDate> b = le_data(ate);
    if (!a || !b) return std::nullopt;
    return a->daysTo(*b);
}

QString mascara_valor(const QString &texto, const QString &mascara) {
    const auto valor = centavos(texto);
    return valor ? formata_centavos(*valor, mascara) : Format(texto, mascara);
}

} // namespace vexa

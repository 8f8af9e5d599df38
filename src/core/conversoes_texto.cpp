// Text on its way to the printer: the printer's character codes, Windows-1252, and the split
// of the amount in words over the cheque's two lines.
#include "core/conversoes.h"

#include <array>

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

} // namespace vexa

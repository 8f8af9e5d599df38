#include "core/ini.h"

#include "core/arquivo.h"
#include "core/conversoes.h"

#include <QFile>
#include <QFileInfo>
#include <vector>

namespace vexa {

namespace {

constexpr qsizetype MaximoLido = 159; // the classic read buffer held 160 with its ending zero
const QByteArray MarcaUtf8 = "\xEF\xBB\xBF";

// A line that is neither a section nor a key (a comment, or text without "=") is kept as it
// stands and never read.
enum class TipoLinha { Vazia, Outra, Secao, Chave };

// One line of the file as it lies on disk, and what it says. The bytes of every line the
// write doesn't touch go back unchanged.
struct Linha {
    QByteArray bytes; // the line with its own line end
    TipoLinha tipo = TipoLinha::Vazia;
    QString nome;  // section or key, trimmed
    QString valor; // trimmed, for keys

    QByteArray fimDeLinha() const {
        if (bytes.endsWith("\r\n")) return "\r\n";
        if (bytes.endsWith('\n')) return "\n";
        if (bytes.endsWith('\r')) return "\r";
        return {};
    }
};

struct Arquivo {
    std::vector<Linha> linhas;
    bool utf8 = false; // a file saved with the UTF-8 mark is read and written as UTF-8
    // The line end of new lines: LF alone only in a file written that way, CRLF otherwise.
    QByteArray fimPadrao = "\r\n";

    QString decodifica(const QByteArray &b) const {
        return utf8 ? QString::fromUtf8(b) : de_ansi(b);
    }
    QByteArray codifica(const QString &s) const { return utf8 ? s.toUtf8() : para_ansi(s); }
};

Linha linha_crua(const QByteArray &bytes) {
    Linha l;
    l.bytes = bytes;
    return l;
}

Linha interpreta(const QByteArray &bytes, const Arquivo &arq, bool primeira) {
    Linha l;
    l.bytes = bytes;
    QByteArray conteudo = bytes;
    if (primeira && conteudo.startsWith(MarcaUtf8)) conteudo.remove(0, MarcaUtf8.size());
    while (conteudo.endsWith('\n') || conteudo.endsWith('\r'))
        conteudo.chop(1);
    const QString texto = arq.decodifica(conteudo).trimmed();
    if (texto.isEmpty()) return l;
    if (texto.startsWith(u';')) {
        l.tipo = TipoLinha::Outra;
        return l;
    }
    if (texto.startsWith(u'[')) {
        const qsizetype fecha = texto.lastIndexOf(u']');
        if (fecha > 0) {
            l.tipo = TipoLinha::Secao;
            l.nome = texto.mid(1, fecha - 1).trimmed();
            return l;
        }
    }
    const qsizetype igual = texto.indexOf(u'=');
    if (igual < 0) {
        l.tipo = TipoLinha::Outra;
        return l;
    }
    l.tipo = TipoLinha::Chave;
    l.nome = texto.left(igual).trimmed();
    l.valor = texto.mid(igual + 1).trimmed();
    return l;
}

Arquivo interpreta(const QByteArray &conteudo) {
    Arquivo arq;
    arq.utf8 = conteudo.startsWith(MarcaUtf8);
    qsizetype inicio = 0;
    // A line ends at CRLF, at LF alone or at CR alone.
    while (inicio < conteudo.size()) {
        qsizetype fim = inicio;
        while (fim < conteudo.size() && conteudo[fim] != '\n' && conteudo[fim] != '\r')
            ++fim;
        if (fim < conteudo.size()) {
            if (conteudo[fim] == '\r' && fim + 1 < conteudo.size() && conteudo[fim + 1] == '\n')
                ++fim;
            ++fim;
        }
        arq.linhas.push_back(interpreta(conteudo.mid(inicio, fim - inicio), arq, inicio == 0));
        inicio = fim;
    }
    for (const Linha &l : arq.linhas) {
        if (!l.fimDeLinha().isEmpty()) {
            if (l.fimDeLinha() == "\n") arq.fimPadrao = "\n";
            break;
        }
    }
    return arq;
}

bool mesmo_nome(const QString &a, const QString &b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

// Index of the first section of that name, or -1.
qsizetype acha_secao(const Arquivo &arq, const QString &secao) {
    for (size_t i = 0; i < arq.linhas.size(); ++i)
        if (arq.linhas[i].tipo == TipoLinha::Secao && mesmo_nome(arq.linhas[i].nome, secao))
            return qsizetype(i);
    return -1;
}

// Index of the first key of that name inside the section that starts at `secao`, or -1;
// `ultimaChave` gets the last key line of the section (the header when it has none).
qsizetype acha_chave(const Arquivo &arq, qsizetype secao, const QString &chave,
                     qsizetype *ultimaChave = nullptr) {
    if (ultimaChave) *ultimaChave = secao;
    for (size_t i = size_t(secao) + 1; i < arq.linhas.size(); ++i) {
        const Linha &l = arq.linhas[i];
        if (l.tipo == TipoLinha::Secao) break;
        if (l.tipo != TipoLinha::Chave) continue;
        if (mesmo_nome(l.nome, chave)) return qsizetype(i);
        if (ultimaChave) *ultimaChave = qsizetype(i);
    }
    return -1;
}

QString tira_aspas(const QString &valor) {
    if (valor.size() >= 2 && (valor.front() == u'"' || valor.front() == u'\'') &&
        valor.back() == valor.front())
        return valor.mid(1, valor.size() - 2);
    return valor;
}

QString le(const QString &caminho, const QString &secao, const QString &chave) {
    QFile arquivo(caminho);
    if (secao.isEmpty() || chave.isEmpty() || !arquivo.open(QIODevice::ReadOnly)) return "-2";
    const Arquivo arq = interpreta(arquivo.readAll());
    const qsizetype s = acha_secao(arq, secao);
    if (s < 0) return "-2";
    const qsizetype c = acha_chave(arq, s, chave);
    if (c < 0) return "-2";
    QString valor = tira_aspas(arq.linhas[size_t(c)].valor).left(MaximoLido);
    const qsizetype zero = valor.indexOf(QChar(0));
    if (zero >= 0) valor.truncate(zero);
    // The missing mark and every value that begins like it read alike.
    if (valor.startsWith(QLatin1String("-2"))) return "-2";
    return valor;
}

// The answer of a write: "1" done, "-1" not done (the file stays as it was).
const QString Feito = QStringLiteral("1");
const QString Falhou = QStringLiteral("-1");

QString grava(const QString &caminho, const QString &secao, const QString &chave, QString valor) {
    if (secao.isEmpty() || chave.isEmpty()) return Falhou;
    // A value is one line: a line break in it would make keys of its own.
    valor.replace(u'\r', u' ').replace(u'\n', u' ').remove(QChar(0));

    QByteArray original;
    QFile arquivo(caminho);
    if (arquivo.exists()) {
        // A file that is there but can't be read is never overwritten blind.
        if (!arquivo.open(QIODevice::ReadOnly)) return Falhou;
        original = arquivo.readAll();
        arquivo.close();
    }
    Arquivo arq = interpreta(original);
    const QByteArray fim = arq.fimPadrao;
    auto linha_chave = [&](const QString &nome) { return arq.codifica(nome + u'=' + valor); };

    const qsizetype s = acha_secao(arq, secao);
    if (s >= 0) {
        qsizetype ultima = s;
        const qsizetype c = acha_chave(arq, s, chave, &ultima);
        if (c >= 0) {
            Linha &l = arq.linhas[size_t(c)];
            const QByteArray fimAntigo = l.fimDeLinha();
            l.bytes = linha_chave(l.nome) + (fimAntigo.isEmpty() ? fim : fimAntigo);
        } else {
            Linha &anterior = arq.linhas[size_t(ultima)];
            if (anterior.fimDeLinha().isEmpty()) anterior.bytes += fim;
            arq.linhas.insert(arq.linhas.begin() + ultima + 1,
                              linha_crua(linha_chave(chave) + fim));
        }
    } else {
        // A new section follows the last line directly, with no blank line between.
        if (!arq.linhas.empty()) {
            Linha &ultimaLinha = arq.linhas.back();
            if (ultimaLinha.fimDeLinha().isEmpty()) ultimaLinha.bytes += fim;
        }
        arq.linhas.push_back(linha_crua(arq.codifica(u'[' + secao + u']') + fim));
        arq.linhas.push_back(linha_crua(linha_chave(chave) + fim));
    }

    QByteArray novo;
    novo.reserve(original.size() + 64);
    for (const Linha &l : arq.linhas)
        novo += l.bytes;
    if (novo == original && QFileInfo::exists(caminho)) return Feito;
    return grava_inteiro(caminho, novo) ? Feito : Falhou;
}

} // namespace

QString LeGravaIni(const QString &CaminhoIni, const QString &Secao, const QString &Chave,
                   const QString &Valor) {
    const QString secao = Secao.trimmed();
    const QString chave = Chave.trimmed();
    if (Valor.isEmpty()) return le(CaminhoIni, secao, chave);
    return grava(CaminhoIni, secao, chave, Valor == QLatin1String("*%*") ? QString() : Valor);
}

QStringList ChavesIni(const QString &CaminhoIni, const QString &Secao) {
    QFile arquivo(CaminhoIni);
    if (!arquivo.open(QIODevice::ReadOnly)) return {};
    const Arquivo arq = interpreta(arquivo.readAll());
    const qsizetype s = acha_secao(arq, Secao.trimmed());
    QStringList chaves;
    for (size_t i = size_t(s) + 1; s >= 0 && i < arq.linhas.size(); ++i) {
        const Linha &l = arq.linhas[i];
        if (l.tipo == TipoLinha::Secao) break;
        if (l.tipo == TipoLinha::Chave && !chaves.contains(l.nome, Qt::CaseInsensitive))
            chaves.append(l.nome);
    }
    return chaves;
}

} // namespace vexa

#include "printer/nativo.h"

#include "core/conversoes.h"

#include <QDir>
#include <QFileInfo>
#include <tuple>

namespace vexa {

#if defined(_WIN32)
#define VEXA32_CHAMADA __stdcall
#else
#define VEXA32_CHAMADA
#endif

namespace {

// A text as the library takes it: a zero-ended Windows-1252 buffer that lives until the call
// returns and that the library may write into.
struct Ansi {
    explicit Ansi(const QString &texto) : bytes(para_ansi(texto)) {
        bytes.reserve(bytes.size() + 1); // an allocated buffer even for an empty text
    }
    QByteArray bytes;
};

// Each argument of an operation in its C type: a text as char *, a number as a 16-bit short.
template <class T> struct TipoC;
template <> struct TipoC<QString> { using Tipo = char *; };
template <> struct TipoC<qint16> { using Tipo = short; };

Ansi para_c(const QString &texto) {
    return Ansi(texto);
}
short para_c(qint16 numero) {
    return numero;
}
char *ponteiro(Ansi &a) {
    return a.bytes.data(); // QByteArray keeps a zero byte after its data
}
short ponteiro(short n) {
    return n;
}

} // namespace

Nativo::Nativo(const QString &local) {
    QString nome = "vexa32";
    if (!local.isEmpty()) {
        const QFileInfo info(local);
        nome = info.isDir() ? QDir(local).filePath("vexa32") : local;
    }
    biblioteca_.setFileName(nome);
    carregada_ = biblioteca_.load();
    if (!carregada_) erro_ = biblioteca_.errorString();
}

Nativo::~Nativo() = default;

QString Nativo::Descricao() const {
    return carregada_ ? QStringLiteral("Impressora Vexa Plus")
                      : QStringLiteral("Impressora Vexa Plus (biblioteca vexa32 não encontrada)");
}

template <class F> F Nativo::funcao(const char *nome) const {
    if (!carregada_) return nullptr;
    return reinterpret_cast<F>(const_cast<QLibrary &>(biblioteca_).resolve(nome));
}

template <class... Args> qint16 Nativo::chama(const char *nome, const Args &...args) {
    using Funcao = short(VEXA32_CHAMADA *)(typename TipoC<Args>::Tipo...);
    const auto f = funcao<Funcao>(nome);
    if (!f) return 0;
    auto argumentos = std::make_tuple(para_c(args)...);
    return std::apply([&](auto &...a) { return f(ponteiro(a)...); }, argumentos);
}

qint16 Nativo::IniciaPorta(const QString &Porta) {
    return chama("IniciaPorta", Porta);
}

qint16 Nativo::FechaPorta() {
    return chama("FechaPorta");
}

qint16 Nativo::TravaDoc(qint16 Trava) {
    return chama("TravaDoc", Trava);
}

qint16 Nativo::ImprimeCheque(const QString &Banco, const QString &Valor, const QString &Favorecido,
                             const QString &Cidade, const QString &Data, const QString &Extra) {
    return chama("ImprimeCheque", Banco, Valor, Favorecido, Cidade, Data, Extra);
}

qint16 Nativo::ImprimeCampoX(qint16 Campo, qint16 Linha, qint16 Coluna, const QString &Texto) {
    return chama("ImprimeCampoX", Campo, Linha, Coluna, Texto);
}

qint16 Nativo::FormataTX(const QString &Texto, qint16 Modo, qint16 A, qint16 B, qint16 C,
                         qint16 D) {
    return chama("FormataTX", Texto, Modo, A, B, C, D);
}

qint16 Nativo::TolvaneTX(const QString &Texto) {
    return chama("TolvaneTX", Texto);
}

qint16 Nativo::ComandoTX(const QString &Comando, qint16 Tamanho) {
    return chama("ComandoTX", Comando, Tamanho);
}

qint16 Nativo::IncluiBanco(const QString &Codigo, const QString &Posicoes) {
    return chama("IncluiBanco", Codigo, Posicoes);
}

qint16 Nativo::IncluiFavorecido(const QString &Codigo, const QString &Nome) {
    return chama("IncluiFavorecido", Codigo, Nome);
}

qint16 Nativo::ExcluiFavorecido(const QString &Codigo) {
    return chama("ExcluiFavorecido", Codigo);
}

qint16 Nativo::AlteraMoeda(const QString &Singular, const QString &Plural) {
    return chama("AlteraMoeda", Singular, Plural);
}

qint16 Nativo::CancelaRel(const QString &Opcao) {
    return chama("CancelaRel", Opcao);
}

qint16 Nativo::MontaValor(QString &Valor, const QString &Singular, const QString &Plural) {
    using Funcao = short(VEXA32_CHAMADA *)(char *, char *, char *);
    const auto f = funcao<Funcao>("MontaValor");
    if (!f) return 0;
    Ansi v(Valor), s(Singular), p(Plural);
    const qsizetype tamanho = v.bytes.size();
    const short r = f(ponteiro(v), ponteiro(s), ponteiro(p));
    // The variable keeps its length: what the library wrote, zero bytes included.
    Valor = de_ansi(QByteArray(v.bytes.constData(), tamanho));
    return r;
}

} // namespace vexa

#include "printer/simulador.h"

#include "core/arquivo.h"
#include "core/conversoes.h"
#include "core/ini.h"
#include "printer/extenso.h"

#include <QDir>
#include <utility>

namespace vexa {

QString Simulador::Chamada::texto() const {
    return Operacao + "(" + Argumentos.join(u'|') + ")";
}

Simulador::Simulador(const QString &caminhoApp)
    : caminhoApp_(QDir::cleanPath(caminhoApp)), pasta_(caminhoApp_ + "/impressora"),
      memoria_(pasta_), papel_(pasta_ + "/papel") {
    le_configuracao();
}

// The settings are read again at every opening of the port, so that the operator can switch
// the paper off and on, or change the port, while the program runs. A missing key is written
// with what the printer has now.
void Simulador::le_configuracao() {
    const QString ini = pasta_ + "/simulador.ini";
    const QString porta = LeGravaIni(ini, "Simulador", "Porta", "");
    if (porta == "-2" || porta.trimmed().isEmpty())
        LeGravaIni(ini, "Simulador", "Porta", porta_);
    else
        porta_ = porta.trimmed();
    const QString papel = LeGravaIni(ini, "Simulador", "Papel", "");
    if (papel == "-2")
        LeGravaIni(ini, "Simulador", "Papel", temPapel_ ? "1" : "0");
    else
        temPapel_ = papel.trimmed() != "0";
}

QString Simulador::Descricao() const {
    return "Impressora simulada (" + porta_ + ")";
}

void Simulador::DefinePorta(const QString &porta) {
    porta_ = porta.trimmed();
    LeGravaIni(pasta_ + "/simulador.ini", "Simulador", "Porta", porta_);
}

void Simulador::DefinePapel(bool temPapel) {
    temPapel_ = temPapel;
    LeGravaIni(pasta_ + "/simulador.ini", "Simulador", "Papel", temPapel ? "1" : "0");
}

void Simulador::Falha(const QString &operacao, qint16 codigo) {
    falhas_[operacao] = codigo;
}

void Simulador::LimpaFalhas() {
    falhas_.clear();
}

QStringList Simulador::Chamadas() const {
    QStringList lista;
    for (const Chamada &c : chamadas_)
        lista << c.texto();
    return lista;
}

qint16 Simulador::opera(const QString &operacao, const QStringList &argumentos, int exige,
                        const std::function<qint16()> &faz) {
    qint16 r = 0;
    if (!falha(operacao, r)) {
        if ((exige & ExigePorta) && !aberta_)
            r = PortaFechada;
        else if ((exige & ExigePapel) && !temPapel_)
            r = SemPapel;
        else
            r = faz();
    }
    chamadas_.append({operacao, argumentos, r});
    return r;
}

bool Simulador::falha(const QString &operacao, qint16 &codigo) const {
    const auto f = falhas_.constFind(operacao);
    if (f == falhas_.constEnd()) return false;
    codigo = *f;
    return true;
}

ModeloFace Simulador::modelo(const QString &Banco) const {
    return {memoria_.Bancos().value(Banco.trimmed()), memoria_.MoedaSingular(),
            memoria_.MoedaPlural(), memoria_.DigitosAno()};
}

// ---------------------------------------------------------------- the port

qint16 Simulador::IniciaPorta(const QString &Porta) {
    return opera("IniciaPorta", {Porta}, 0, [&]() -> qint16 {
        le_configuracao();
        if (Porta.trimmed().compare(porta_, Qt::CaseInsensitive) != 0) return 0;
        // Opening it again ends whatever run of text was left open. Its answer is the port's:
        // what became of that run belongs to an opening that never closed.
        aberta_ = true;
        encerra_documento();
        perdeu_ = false;
        return Feito;
    });
}

qint16 Simulador::FechaPorta() {
    return opera("FechaPorta", {}, ExigePorta, [&]() -> qint16 {
        aberta_ = false;
        encerra_documento();
        return std::exchange(perdeu_, false) ? MemoriaFalhou : Feito;
    });
}

qint16 Simulador::TravaDoc(qint16 Trava) {
    return opera("TravaDoc", {QString::number(Trava)}, ExigePorta, [&]() -> qint16 {
        if (Trava != 0 && Trava != 1) return ArgumentoInvalido;
        return encerra_documento();
    });
}

// ---------------------------------------------------------------- the cheque

QStringList Simulador::Face(const QString &Banco, const QString &Valor, const QString &Favorecido,
                            const QString &Cidade, const QString &Data) const {
    if (!memoria_.Bancos().contains(Banco.trimmed())) return {};
    return compoe_face(modelo(Banco), Valor, Favorecido, Cidade, Data, extras_);
}

qint16 Simulador::ImprimeCheque(const QString &Banco, const QString &Valor,
                                const QString &Favorecido, const QString &Cidade,
                                const QString &Data, const QString &Extra) {
    // The extra fields go with this cheque whatever becomes of it.
    const QMap<int, CampoExtra> extras = toma_extras();
    const QStringList args{Banco, Valor, Favorecido, Cidade, Data, Extra};
    return opera("ImprimeCheque", args, ExigePorta | ExigePapel, [&]() -> qint16 {
        if (!memoria_.Bancos().contains(Banco.trimmed())) return BancoSemLayout;
        const QStringList face =
            compoe_face(modelo(Banco), Valor, Favorecido, Cidade, Data, extras);
        if (face.isEmpty()) return ArgumentoInvalido;
        if (!memoria_.Gravavel()) return MemoriaFalhou;
        encerra_documento();
        const int numero = papel_.proximo(memoria_.UltimoPapel());
        if (!papel_.grava_face(numero, face)) return MemoriaFalhou;
        if (!memoria_.registra_cheque({numero, Banco.trimmed(), Valor.trimmed(),
                                       da_impressora(Favorecido), da_impressora(Cidade),
                                       Data.trimmed(), false})) {
            papel_.descarta(numero);
            return MemoriaFalhou;
        }
        return Feito;
    });
}

qint16 Simulador::ImprimeCampoX(qint16 Campo, qint16 Linha, qint16 Coluna, const QString &Texto) {
    const QStringList args{QString::number(Campo), QString::number(Linha), QString::number(Coluna),
                           Texto};
    return opera("ImprimeCampoX", args, 0, [&]() -> qint16 {
        if (Campo < 1 || Campo > 3) return ArgumentoInvalido;
        extras_[Campo] = {Linha, Coluna, da_impressora(Texto)};
        return Feito;
    });
}

// ---------------------------------------------------------------- text

// The sheet takes what the printer read only when it reached the disk: a text that failed
// can be sent again.
qint16 Simulador::escreve_texto(const QString &texto) {
    FolhaTexto folha = folha_;
    const qint16 r = poe_no_papel(folha.recebe(da_impressora(texto)));
    if (r == Feito) folha_ = folha;
    return r;
}

qint16 Simulador::encerra_documento() {
    FolhaTexto folha = folha_;
    qint16 r = poe_no_papel(folha.encerra());
    if (r == Feito) folha_ = folha;
    if (documento_ != 0 &&
        !papel_.grava_pdf(documento_, folha_.Linhas(), folha_.Forma(), QStringLiteral("Folha")))
        r = MemoriaFalhou;
    if (r != Feito) perdeu_ = true;
    documento_ = 0;
    folha_ = FolhaTexto();
    return r;
}

qint16 Simulador::poe_no_papel(const QString &impresso) {
    if (impresso.isEmpty()) return Feito;
    if (documento_ != 0) return papel_.acrescenta(documento_, impresso) ? Feito : MemoriaFalhou;
    if (!memoria_.Gravavel()) return MemoriaFalhou;
    const int numero = papel_.proximo(memoria_.UltimoPapel());
    if (!papel_.acrescenta(numero, impresso)) {
        papel_.descarta(numero);
        return MemoriaFalhou;
    }
    if (!memoria_.registra_papel(numero)) {
        papel_.descarta(numero);
        return MemoriaFalhou;
    }
    documento_ = numero;
    return Feito;
}

qint16 Simulador::FormataTX(const QString &Texto, qint16 Modo, qint16 A, qint16 B, qint16 C,
                            qint16 D) {
    const QStringList args{Texto,
                           QString::number(Modo),
                           QString::number(A),
                           QString::number(B),
                           QString::number(C),
                           QString::number(D)};
    return opera("FormataTX", args, exige_texto(), [&]() -> qint16 {
        if (Modo < 1 || Modo > 3) return ArgumentoInvalido;
        folha_de_texto().define_forma(Modo == 2 && C != 1 ? Formulario::Cheque
                                                          : Formulario::Pagina);
        return recebe_texto(Texto);
    });
}

qint16 Simulador::TolvaneTX(const QString &Texto) {
    return opera("TolvaneTX", {Texto}, exige_texto(),
                 [&]() -> qint16 { return recebe_texto(Texto); });
}

qint16 Simulador::ComandoTX(const QString &Comando, qint16 Tamanho) {
    return opera("ComandoTX", {Comando, QString::number(Tamanho)}, ExigePorta, [&]() -> qint16 {
        const QByteArray bytes = para_ansi(Comando);
        if (Tamanho < 1 || Tamanho > bytes.size()) return ArgumentoInvalido;
        const QByteArray comando = bytes.left(Tamanho);
        // ESC AF "D" digit CR: how many digits of the year the date prints with.
        if (comando.startsWith("\x1B\xAF"
                               "D")) {
            const char digito = comando.size() == 5 && comando[4] == '\r' ? comando[3] : 0;
            if (digito != '1' && digito != '2' && digito != '4') return ArgumentoInvalido;
            if (!memoria_.define_digitos_ano(digito - '0')) return MemoriaFalhou;
        }
        return Feito;
    });
}

// ---------------------------------------------------------------- the memory's commands

qint16 Simulador::IncluiBanco(const QString &Codigo, const QString &Posicoes) {
    return opera("IncluiBanco", {Codigo, Posicoes}, ExigePorta, [&]() -> qint16 {
        if (Codigo.trimmed().isEmpty() || !posicoes_validas(Posicoes)) return ArgumentoInvalido;
        QStringList valores = Posicoes.split(u',');
        for (QString &v : valores)
            v = v.trimmed();
        return memoria_.define_banco(Codigo.trimmed(), valores.join(u',')) ? Feito : MemoriaFalhou;
    });
}

qint16 Simulador::IncluiFavorecido(const QString &Codigo, const QString &Nome) {
    return opera("IncluiFavorecido", {Codigo, Nome}, ExigePorta, [&]() -> qint16 {
        if (Codigo.trimmed().isEmpty() || Nome.trimmed().isEmpty()) return ArgumentoInvalido;
        return memoria_.define_favorecido(Codigo.trimmed(), da_impressora(Nome.trimmed()))
                   ? Feito
                   : MemoriaFalhou;
    });
}

qint16 Simulador::ExcluiFavorecido(const QString &Codigo) {
    return opera("ExcluiFavorecido", {Codigo}, ExigePorta, [&]() -> qint16 {
        // "*" (the option Todos) and an empty code remove every payee.
        const QString codigo = Codigo.trimmed().isEmpty() ? "*" : Codigo.trimmed();
        if (codigo != "*" && !memoria_.Favorecidos().contains(codigo)) return ArgumentoInvalido;
        return memoria_.exclui_favorecido(codigo) ? Feito : MemoriaFalhou;
    });
}

qint16 Simulador::AlteraMoeda(const QString &Singular, const QString &Plural) {
    return opera("AlteraMoeda", {Singular, Plural}, ExigePorta, [&]() -> qint16 {
        if (Singular.trimmed().isEmpty() || Plural.trimmed().isEmpty()) return ArgumentoInvalido;
        return memoria_.define_moeda(da_impressora(Singular.trimmed()),
                                     da_impressora(Plural.trimmed()))
                   ? Feito
                   : MemoriaFalhou;
    });
}

qint16 Simulador::CancelaRel(const QString &Opcao) {
    return opera("CancelaRel", {Opcao}, ExigePorta, [&]() -> qint16 {
        if (Opcao != "*" && Opcao.compare("u", Qt::CaseInsensitive) != 0) return ArgumentoInvalido;
        return memoria_.cancela(Opcao == "*" ? "*" : "u") ? Feito : MemoriaFalhou;
    });
}

qint16 Simulador::MontaValor(QString &Valor, const QString &Singular, const QString &Plural) {
    return opera("MontaValor", {Valor, Singular, Plural}, 0, [&]() -> qint16 {
        const std::optional<qint64> cents = centavos(Valor);
        if (!cents || *cents <= 0 || *cents > ExtensoMaximo) return ValoresErrados;
        // The words and the zero byte that ends them, as the library leaves its string.
        const QByteArray conteudo = para_ansi(extenso(*cents, Singular, Plural)) + '\0';
        if (!grava_inteiro(caminhoApp_ + "/Extenso.ret", conteudo)) return ArquivoFalhou;
        return ValorFeito;
    });
}

} // namespace vexa

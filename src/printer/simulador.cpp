#include "printer/simulador.h"

#include "core/conversoes.h"
#include "core/ini.h"
#include "core/relogio.h"
#include "printer/extenso.h"
#include "store/bancos_padrao.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QSaveFile>
#include <algorithm>
#include <array>
#include <utility>

namespace vexa {

namespace {

constexpr int Colunas = 120;
constexpr int Linhas = 22;

// Code page 850 from 0x80 to 0xFF: the printer's own characters.
constexpr std::array<char16_t, 128> cp850 = {
    0x00C7, 0x00FC, 0x00E9, 0x00E2, 0x00E4, 0x00E0, 0x00E5, 0x00E7, 0x00EA, 0x00EB, 0x00E8, 0x00EF,
    0x00EE, 0x00EC, 0x00C4, 0x00C5, 0x00C9, 0x00E6, 0x00C6, 0x00F4, 0x00F6, 0x00F2, 0x00FB, 0x00F9,
    0x00FF, 0x00D6, 0x00DC, 0x00F8, 0x00A3, 0x00D8, 0x00D7, 0x0192, 0x00E1, 0x00ED, 0x00F3, 0x00FA,
    0x00F1, 0x00D1, 0x00AA, 0x00BA, 0x00BF, 0x00AE, 0x00AC, 0x00BD, 0x00BC, 0x00A1, 0x00AB, 0x00BB,
    0x2591, 0x2592, 0x2593, 0x2502, 0x2524, 0x00C1, 0x00C2, 0x00C0, 0x00A9, 0x2563, 0x2551, 0x2557,
    0x255D, 0x00A2, 0x00A5, 0x2510, 0x2514, 0x2534, 0x252C, 0x251C, 0x2500, 0x253C, 0x00E3, 0x00C3,
    0x255A, 0x2554, 0x2569, 0x2566, 0x2560, 0x2550, 0x256C, 0x00A4, 0x00F0, 0x00D0, 0x00CA, 0x00CB,
    0x00C8, 0x0131, 0x00CD, 0x00CE, 0x00CF, 0x2518, 0x250C, 0x2588, 0x2584, 0x00A6, 0x00CC, 0x2580,
    0x00D3, 0x00DF, 0x00D4, 0x00D2, 0x00F5, 0x00D5, 0x00B5, 0x00FE, 0x00DE, 0x00DA, 0x00DB, 0x00D9,
    0x00FD, 0x00DD, 0x00AF, 0x00B4, 0x00AD, 0x00B1, 0x2017, 0x00BE, 0x00B6, 0x00A7, 0x00F7, 0x00B8,
    0x00B0, 0x00A8, 0x00B7, 0x00B9, 0x00B3, 0x00B2, 0x25A0, 0x00A0};

// What the printer reads in a text: its Windows-1252 bytes taken as code page 850, up to the
// zero byte that ends a C string (nothing after it reaches the library).
QString da_impressora(const QString &texto) {
    QString saida;
    for (const char b : para_ansi(texto.left(texto.indexOf(QChar(0))))) {
        const auto u = static_cast<unsigned char>(b);
        saida += u < 0x80 ? QChar(u) : QChar(cp850[u - 0x80]);
    }
    return saida;
}

// What a run of text leaves on paper: CR and the two-byte ESC commands don't print.
QString texto_impresso(const QString &texto) {
    const QString lido = da_impressora(texto);
    QString saida;
    for (qsizetype i = 0; i < lido.size(); ++i) {
        const QChar c = lido[i];
        if (c == u'\x1B') {
            ++i;
        } else if (c == u'\n' || c == u'\t' || c >= u' ') {
            saida += c;
        }
    }
    return saida;
}

QString digitos_ano(int ano, int digitos) {
    const QString quatro = QStringLiteral("%1").arg(ano, 4, 10, QChar(u'0'));
    return quatro.right(digitos);
}

bool posicoes_validas(const QString &posicoes) {
    static const QRegularExpression numero("^[0-9]{1,3}$");
    const QStringList valores = posicoes.split(u',');
    if (valores.size() != 13) return false;
    for (const QString &v : valores)
        if (!numero.match(v.trimmed()).hasMatch()) return false;
    return true;
}

void poe(QStringList &grade, int linha, int coluna, const QString &texto) {
    if (linha < 1 || linha > Linhas || coluna < 1 || coluna > Colunas) return;
    QString &l = grade[linha - 1];
    for (qsizetype i = 0; i < texto.size() && coluna - 1 + i < Colunas; ++i)
        l[coluna - 1 + i] = texto[i];
}

bool grava_arquivo(const QString &caminho, const QByteArray &conteudo) {
    QSaveFile f(caminho);
    if (!f.open(QIODevice::WriteOnly)) return false;
    f.write(conteudo);
    return f.commit();
}

} // namespace

QString Simulador::Chamada::texto() const {
    return Operacao + "(" + Argumentos.join(u'|') + ")";
}

Simulador::Simulador(const QString &caminhoApp)
    : caminhoApp_(QDir::cleanPath(caminhoApp)), pasta_(caminhoApp_ + "/impressora") {
    QDir().mkpath(PastaPapel());
    const QString ini = pasta_ + "/simulador.ini";
    const QString porta = LeGravaIni(ini, "Simulador", "Porta", "");
    if (porta == "-2" || porta.trimmed().isEmpty())
        LeGravaIni(ini, "Simulador", "Porta", porta_);
    else
        porta_ = porta.trimmed();
    const QString papel = LeGravaIni(ini, "Simulador", "Papel", "");
    if (papel == "-2")
        LeGravaIni(ini, "Simulador", "Papel", "1");
    else
        papel_ = papel.trimmed() != "0";
    carrega();
}

QString Simulador::Descricao() const {
    return "Impressora simulada (" + porta_ + ")";
}

void Simulador::DefinePorta(const QString &porta) {
    porta_ = porta.trimmed();
    LeGravaIni(pasta_ + "/simulador.ini", "Simulador", "Porta", porta_);
}

void Simulador::DefinePapel(bool temPapel) {
    papel_ = temPapel;
    LeGravaIni(pasta_ + "/simulador.ini", "Simulador", "Papel", temPapel ? "1" : "0");
}

QString Simulador::PastaPapel() const {
    return pasta_ + "/papel";
}

QString Simulador::ArquivoPapel(int numero) const {
    return PastaPapel() + QStringLiteral("/%1.txt").arg(numero, 6, 10, QChar(u'0'));
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
        else if ((exige & ExigePapel) && !papel_)
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

// ---------------------------------------------------------------- memory

void Simulador::carrega() {
    QFile f(pasta_ + "/memoria.json");
    if (!f.exists()) {
        // Out of the factory: the preset banks under the default layout.
        const QString padrao = PosicoesPadrao().join(u',');
        for (const auto &banco : BancosPadrao())
            bancos_[banco.first] = padrao;
        grava();
        return;
    }
    QJsonParseError erro;
    const QJsonDocument doc =
        f.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(f.readAll(), &erro) : QJsonDocument();
    f.close();
    if (!doc.isObject()) {
        // Kept aside, never overwritten: the operator may still want what it held.
        const QString aparte = f.fileName() + ".ilegivel";
        QFile::remove(aparte);
        QFile::rename(f.fileName(), aparte);
        carrega();
        return;
    }
    const QJsonObject o = doc.object();
    const QJsonObject bancos = o.value("bancos").toObject();
    for (auto i = bancos.begin(); i != bancos.end(); ++i)
        bancos_[i.key()] = i.value().toString();
    const QJsonObject favorecidos = o.value("favorecidos").toObject();
    for (auto i = favorecidos.begin(); i != favorecidos.end(); ++i)
        favorecidos_[i.key()] = i.value().toString();
    const QJsonObject moeda = o.value("moeda").toObject();
    moedaSingular_ = moeda.value("singular").toString(moedaSingular_);
    moedaPlural_ = moeda.value("plural").toString(moedaPlural_);
    const int digitos = o.value("digitosAno").toInt(4);
    digitosAno_ = digitos == 1 || digitos == 2 ? digitos : 4;
    for (const QJsonValue &v : o.value("relatorio").toArray()) {
        const QJsonObject i = v.toObject();
        relatorio_.append({i.value("papel").toInt(), i.value("banco").toString(),
                           i.value("valor").toString(), i.value("favorecido").toString(),
                           i.value("cidade").toString(), i.value("data").toString(),
                           i.value("cancelado").toBool()});
    }
    ultimoPapel_ = o.value("ultimoPapel").toInt();
}

void Simulador::grava() const {
    QJsonObject bancos, favorecidos;
    for (auto i = bancos_.begin(); i != bancos_.end(); ++i)
        bancos[i.key()] = i.value();
    for (auto i = favorecidos_.begin(); i != favorecidos_.end(); ++i)
        favorecidos[i.key()] = i.value();
    QJsonArray relatorio;
    for (const ItemRelatorio &i : relatorio_)
        relatorio.append(QJsonObject{{"papel", i.Papel},
                                     {"banco", i.Banco},
                                     {"valor", i.Valor},
                                     {"favorecido", i.Favorecido},
                                     {"cidade", i.Cidade},
                                     {"data", i.Data},
                                     {"cancelado", i.Cancelado}});
    const QJsonObject o{
        {"bancos", bancos},
        {"favorecidos", favorecidos},
        {"moeda", QJsonObject{{"singular", moedaSingular_}, {"plural", moedaPlural_}}},
        {"digitosAno", digitosAno_},
        {"relatorio", relatorio},
        {"ultimoPapel", ultimoPapel_}};
    grava_arquivo(pasta_ + "/memoria.json", QJsonDocument(o).toJson());
}

int Simulador::novo_papel() {
    do {
        ++ultimoPapel_;
    } while (QFileInfo::exists(ArquivoPapel(ultimoPapel_)));
    return ultimoPapel_;
}

void Simulador::escreve_texto(const QString &texto) {
    const QString impresso = texto_impresso(texto);
    if (impresso.isEmpty()) return;
    if (documento_ == 0) {
        documento_ = novo_papel();
        textoDocumento_.clear();
        grava();
    }
    textoDocumento_ += impresso;
    grava_arquivo(ArquivoPapel(documento_), textoDocumento_.toUtf8());
}

// ---------------------------------------------------------------- the port

qint16 Simulador::IniciaPorta(const QString &Porta) {
    return opera("IniciaPorta", {Porta}, 0, [&]() -> qint16 {
        if (Porta.trimmed().compare(porta_, Qt::CaseInsensitive) != 0) return 0;
        // Opening it again ends whatever run of text was left open.
        aberta_ = true;
        fecha_documento();
        return Feito;
    });
}

qint16 Simulador::FechaPorta() {
    return opera("FechaPorta", {}, ExigePorta, [&]() -> qint16 {
        aberta_ = false;
        fecha_documento();
        return Feito;
    });
}

qint16 Simulador::TravaDoc(qint16 Trava) {
    return opera("TravaDoc", {QString::number(Trava)}, ExigePorta, [&]() -> qint16 {
        if (Trava != 0 && Trava != 1) return ArgumentoInvalido;
        fecha_documento();
        return Feito;
    });
}

// ---------------------------------------------------------------- the cheque

QStringList Simulador::Face(const QString &Banco, const QString &Valor, const QString &Favorecido,
                            const QString &Cidade, const QString &Data) const {
    return compoe_face(Banco, Valor, Favorecido, Cidade, Data, extras_);
}

QStringList Simulador::compoe_face(const QString &Banco, const QString &Valor,
                                   const QString &Favorecido, const QString &Cidade,
                                   const QString &Data, const QMap<int, Campo> &extras) const {
    const auto posicoes = bancos_.constFind(Banco.trimmed());
    if (posicoes == bancos_.constEnd()) return {};
    QList<int> p;
    for (const QString &v : posicoes->split(u','))
        p << v.trimmed().toInt();
    if (p.size() != 13) return {};
    const int L1 = p[0], L2 = p[1], L3 = p[2], L4 = p[3], L5 = p[4];
    const int C1 = p[5], C2 = p[6], C3 = p[7], C4 = p[8], C5 = p[9];
    const int C6 = p[10], C7 = p[11], C8 = p[12];

    const std::optional<qint64> cents = centavos(Valor);
    if (!cents || *cents <= 0 || *cents > ExtensoMaximo) return {};
    static const QRegularExpression data("^([0-9]{1,2})/([0-9]{1,2})/([0-9]{2}|[0-9]{4})$");
    const auto m = data.match(Data.trimmed());
    if (!m.hasMatch()) return {};
    const int ano =
        m.captured(3).size() == 4 ? m.captured(3).toInt() : ano_completo(m.captured(3).toInt());
    const QDate dia(ano, m.captured(2).toInt(), m.captured(1).toInt());
    if (!dia.isValid()) return {};

    QStringList grade;
    for (int i = 0; i < Linhas; ++i)
        grade << QString(Colunas, u' ');

    poe(grade, L1, C1, "#" + Valor.trimmed() + "#");

    // The words break at a blank where the first line reaches the last column; the second
    // line is closed with "*" so that nothing can be written after the words.
    const QString palavras = extenso(*cents, moedaSingular_, moedaPlural_);
    const int largura1 = qMax(1, Colunas - C2 + 1);
    const int largura2 = qMax(1, Colunas - C3 + 1);
    QString linha1 = palavras, resto;
    if (palavras.size() > largura1) {
        QString pedaco = palavras.left(largura1 + 1);
        while (!pedaco.isEmpty() && pedaco.back() != u' ')
            pedaco.chop(1);
        if (pedaco.trimmed().isEmpty()) pedaco = palavras.left(largura1);
        linha1 = pedaco;
        while (linha1.endsWith(u' '))
            linha1.chop(1);
        resto = palavras.mid(pedaco.size()).trimmed();
    }
    QString linha2 = resto.isEmpty() ? QString() : resto + " ";
    if (linha2.size() < largura2) linha2 += QString(largura2 - linha2.size(), u'*');
    poe(grade, L2, C2, linha1);
    poe(grade, L3, C3, linha2);

    poe(grade, L4, C4, da_impressora(Favorecido));
    poe(grade, L5, C5, da_impressora(Cidade));
    poe(grade, L5, C5 + C6, QStringLiteral("%1").arg(dia.day(), 2, 10, QChar(u'0')));
    poe(grade, L5, C5 + C7, MesExtenso(QString::number(dia.month())));
    poe(grade, L5, C5 + C8, digitos_ano(dia.year(), digitosAno_));

    for (const Campo &c : extras)
        poe(grade, c.Linha, c.Coluna, c.Texto);

    for (QString &l : grade)
        while (l.endsWith(u' '))
            l.chop(1);
    return grade;
}

qint16 Simulador::ImprimeCheque(const QString &Banco, const QString &Valor,
                                const QString &Favorecido, const QString &Cidade,
                                const QString &Data, const QString &Extra) {
    // The extra fields go with this cheque whatever becomes of it.
    const QMap<int, Campo> extras = std::exchange(extras_, {});
    const QStringList args{Banco, Valor, Favorecido, Cidade, Data, Extra};
    return opera("ImprimeCheque", args, ExigePorta | ExigePapel, [&]() -> qint16 {
        if (!bancos_.contains(Banco.trimmed())) return BancoSemLayout;
        const QStringList face = compoe_face(Banco, Valor, Favorecido, Cidade, Data, extras);
        if (face.isEmpty()) return ArgumentoInvalido;
        fecha_documento();
        const int numero = novo_papel();
        grava_arquivo(ArquivoPapel(numero), (face.join(u'\n') + "\n").toUtf8());
        grava_pdf(face, PastaPapel() + QStringLiteral("/%1.pdf").arg(numero, 6, 10, QChar(u'0')));
        relatorio_.append({numero, Banco.trimmed(), Valor.trimmed(), da_impressora(Favorecido),
                           da_impressora(Cidade), Data.trimmed(), false});
        grava();
        return Feito;
    });
}

void Simulador::grava_pdf(const QStringList &face, const QString &caminho) const {
    // Painting needs the GUI application's fonts; a run without one keeps the text alone.
    if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance())) return;
    QPdfWriter pdf(caminho);
    pdf.setTitle("Cheque " + QFileInfo(caminho).completeBaseName());
    pdf.setResolution(300);
    pdf.setPageSize(QPageSize(QSizeF(215, 83), QPageSize::Millimeter, "Cheque"));
    pdf.setPageMargins(QMarginsF(5, 5, 5, 5), QPageLayout::Millimeter);
    QPainter p;
    if (!p.begin(&pdf)) return;
    QFont fonte("DejaVu Sans Mono");
    fonte.setStyleHint(QFont::TypeWriter);
    fonte.setFixedPitch(true);
    fonte.setPointSizeF(8);
    p.setFont(fonte);
    const QFontMetricsF fm(fonte, &pdf);
    const qreal largura = fm.horizontalAdvance(QString(Colunas, u'M'));
    const qreal altura = fm.lineSpacing() * Linhas;
    const QRectF area = QRectF(QPointF(0, 0), QSizeF(pdf.width(), pdf.height()));
    const qreal escala = qMin(area.width() / largura, area.height() / altura);
    p.scale(escala, escala);
    p.setPen(QColor(200, 200, 200));
    p.drawRect(QRectF(0, 0, largura, altura));
    p.setPen(Qt::black);
    for (int i = 0; i < face.size(); ++i)
        p.drawText(QPointF(0, fm.ascent() + i * fm.lineSpacing()), face[i]);
    p.end();
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

qint16 Simulador::FormataTX(const QString &Texto, qint16 Modo, qint16 A, qint16 B, qint16 C,
                            qint16 D) {
    const QStringList args{Texto,
                           QString::number(Modo),
                           QString::number(A),
                           QString::number(B),
                           QString::number(C),
                           QString::number(D)};
    return opera("FormataTX", args, ExigePorta | ExigePapel, [&]() -> qint16 {
        if (Modo < 1 || Modo > 3) return ArgumentoInvalido;
        escreve_texto(Texto);
        return Feito;
    });
}

qint16 Simulador::TolvaneTX(const QString &Texto) {
    return opera("TolvaneTX", {Texto}, ExigePorta | ExigePapel, [&]() -> qint16 {
        escreve_texto(Texto);
        return Feito;
    });
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
            digitosAno_ = digito - '0';
            grava();
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
        bancos_[Codigo.trimmed()] = valores.join(u',');
        grava();
        return Feito;
    });
}

qint16 Simulador::IncluiFavorecido(const QString &Codigo, const QString &Nome) {
    return opera("IncluiFavorecido", {Codigo, Nome}, ExigePorta, [&]() -> qint16 {
        if (Codigo.trimmed().isEmpty() || Nome.trimmed().isEmpty()) return ArgumentoInvalido;
        favorecidos_[Codigo.trimmed()] = da_impressora(Nome.trimmed());
        grava();
        return Feito;
    });
}

qint16 Simulador::ExcluiFavorecido(const QString &Codigo) {
    return opera("ExcluiFavorecido", {Codigo}, ExigePorta, [&]() -> qint16 {
        // "*" (the option Todos) and an empty code remove every payee.
        if (Codigo.trimmed().isEmpty() || Codigo.trimmed() == "*")
            favorecidos_.clear();
        else if (!favorecidos_.remove(Codigo.trimmed()))
            return ArgumentoInvalido;
        grava();
        return Feito;
    });
}

qint16 Simulador::AlteraMoeda(const QString &Singular, const QString &Plural) {
    return opera("AlteraMoeda", {Singular, Plural}, ExigePorta, [&]() -> qint16 {
        if (Singular.trimmed().isEmpty() || Plural.trimmed().isEmpty()) return ArgumentoInvalido;
        moedaSingular_ = da_impressora(Singular.trimmed());
        moedaPlural_ = da_impressora(Plural.trimmed());
        grava();
        return Feito;
    });
}

qint16 Simulador::CancelaRel(const QString &Opcao) {
    return opera("CancelaRel", {Opcao}, ExigePorta, [&]() -> qint16 {
        if (Opcao == "*") {
            for (ItemRelatorio &i : relatorio_)
                i.Cancelado = true;
        } else if (Opcao.compare("u", Qt::CaseInsensitive) == 0) {
            const auto ultimo = std::find_if(relatorio_.rbegin(), relatorio_.rend(),
                                             [](const ItemRelatorio &i) { return !i.Cancelado; });
            if (ultimo != relatorio_.rend()) ultimo->Cancelado = true;
        } else {
            return ArgumentoInvalido;
        }
        grava();
        return Feito;
    });
}

qint16 Simulador::MontaValor(QString &Valor, const QString &Singular, const QString &Plural) {
    return opera("MontaValor", {Valor, Singular, Plural}, 0, [&]() -> qint16 {
        const std::optional<qint64> cents = centavos(Valor);
        if (!cents || *cents <= 0 || *cents > ExtensoMaximo) return ValoresErrados;
        // The words and the zero byte that ends them, as the library leaves its string.
        const QByteArray conteudo = para_ansi(extenso(*cents, Singular, Plural)) + '\0';
        if (!grava_arquivo(caminhoApp_ + "/Extenso.ret", conteudo)) return ArquivoFalhou;
        return ValorFeito;
    });
}

} // namespace vexa

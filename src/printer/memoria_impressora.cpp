#include "printer/memoria_impressora.h"

#include "core/arquivo.h"
#include "store/bancos_padrao.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <algorithm>

namespace vexa {

namespace {

// Below this a journal is never worth a rewrite of the state.
constexpr qint64 DiarioPequeno = 64 * 1024;

QJsonObject item_json(const ItemRelatorio &i) {
    return QJsonObject{{"papel", i.Papel},           {"banco", i.Banco},   {"valor", i.Valor},
                       {"favorecido", i.Favorecido}, {"cidade", i.Cidade}, {"data", i.Data},
                       {"cancelado", i.Cancelado}};
}

ItemRelatorio item_de(const QJsonObject &i) {
    return {i.value(u"papel").toInt(),     i.value(u"banco").toString(),
            i.value(u"valor").toString(),  i.value(u"favorecido").toString(),
            i.value(u"cidade").toString(), i.value(u"data").toString(),
            i.value(u"cancelado").toBool()};
}

// The journals in the folder, by generation.
QMap<int, QString> diarios(const QString &pasta) {
    static const QRegularExpression nome("^memoria-([0-9]+)\\.diario$");
    QMap<int, QString> achados;
    for (const QString &arquivo : QDir(pasta).entryList({"memoria-*.diario"}, QDir::Files)) {
        const auto m = nome.match(arquivo);
        if (m.hasMatch()) achados[m.captured(1).toInt()] = pasta + "/" + arquivo;
    }
    return achados;
}

} // namespace

MemoriaImpressora::MemoriaImpressora(const QString &pasta) : pasta_(pasta) {
    QDir().mkpath(pasta_);
    if (!QFileInfo::exists(ArquivoEstado())) {
        de_fabrica();
        return;
    }
    if (!le()) {
        poe_de_lado();
        return;
    }
    // Journals older than the state are already in it (a start that ended between writing
    // the state and dropping its old journal leaves one).
    for (auto [geracao, arquivo] : diarios(pasta_).asKeyValueRange())
        if (geracao < geracao_) QFile::remove(arquivo);
    le_diario();
}

QString MemoriaImpressora::ArquivoEstado() const {
    return pasta_ + "/memoria.json";
}

QString MemoriaImpressora::ArquivoDiario() const {
    return pasta_ + QStringLiteral("/memoria-%1.diario").arg(geracao_);
}

void MemoriaImpressora::de_fabrica() {
    const QString padrao = posicoes_padrao().join(u',');
    for (const auto &banco : bancos_padrao())
        bancos_[banco.first] = padrao;
    // Journals without their state belong to no memory: kept aside, and the new state starts
    // past their generations so that none of them is ever read into it.
    const QMap<int, QString> soltos = diarios(pasta_);
    geracao_ = soltos.isEmpty() ? 0 : soltos.lastKey();
    for (const QString &arquivo : soltos) {
        QFile::remove(arquivo + ".ilegivel");
        QFile::rename(arquivo, arquivo + ".ilegivel");
    }
    gravavel_ = compacta();
}

bool MemoriaImpressora::le() {
    QFile f(ArquivoEstado());
    if (!f.open(QIODevice::ReadOnly)) return false;
    const QJsonDocument doc = QJsonDocument::fromJson(f.readAll());
    if (!doc.isObject()) return false;
    le_estado(doc.object());
    return true;
}

void MemoriaImpressora::poe_de_lado() {
    // Kept aside, never overwritten: the operator may still want what it held. Where it can't
    // be moved, it stays as it is and nothing more is written over it.
    const QString aparte = ArquivoEstado() + ".ilegivel";
    QFile::remove(aparte);
    if (QFile::rename(ArquivoEstado(), aparte)) {
        de_fabrica();
    } else {
        const QString padrao = posicoes_padrao().join(u',');
        for (const auto &banco : bancos_padrao())
            bancos_[banco.first] = padrao;
        gravavel_ = false;
    }
}

void MemoriaImpressora::le_diario() {
    QFile f(ArquivoDiario());
    if (!f.exists()) return;
    if (!f.open(QIODevice::ReadWrite)) {
        gravavel_ = false;
        return;
    }
    const QByteArray tudo = f.readAll();
    qsizetype lido = 0;
    // The lines that add to the state (a cheque, a sheet) rather than replace a part of it:
    // roughly what the state would grow by if the journal were folded into it.
    qsizetype acrescimos = 0;
    for (qsizetype fim = tudo.indexOf('\n'); fim >= 0; fim = tudo.indexOf('\n', lido)) {
        const QJsonDocument doc = QJsonDocument::fromJson(tudo.mid(lido, fim - lido));
        if (!doc.isObject()) break;
        const QJsonObject mudanca = doc.object();
        executa(mudanca);
        const QString op = mudanca.value(u"op").toString();
        if (op == "cheque" || op == "papel") acrescimos += fim + 1 - lido;
        lido = fim + 1;
    }
    if (lido < tudo.size()) {
        // A change cut short by a crash: the journal goes back to its last whole line, so
        // that the next change isn't glued to it.
        if (!f.resize(lido)) {
            f.close();
            gravavel_ = compacta();
            return;
        }
    }
    f.close();
    if (lido > DiarioPequeno && lido > 2 * (QFileInfo(ArquivoEstado()).size() + acrescimos))
        compacta();
}

bool MemoriaImpressora::compacta() {
    const QString antigo = ArquivoDiario();
    QJsonObject o = estado();
    o["geracao"] = geracao_ + 1;
    if (!grava_inteiro(ArquivoEstado(), QJsonDocument(o).toJson())) return false;
    ++geracao_;
    QFile::remove(antigo);
    return true;
}

QJsonObject MemoriaImpressora::estado() const {
    QJsonObject bancos, favorecidos;
    for (auto i = bancos_.begin(); i != bancos_.end(); ++i)
        bancos[i.key()] = i.value();
    for (auto i = favorecidos_.begin(); i != favorecidos_.end(); ++i)
        favorecidos[i.key()] = i.value();
    QJsonArray relatorio;
    for (const ItemRelatorio &i : relatorio_)
        relatorio.append(item_json(i));
    return QJsonObject{
        {"geracao", geracao_},
        {"bancos", bancos},
        {"favorecidos", favorecidos},
        {"moeda", QJsonObject{{"singular", moedaSingular_}, {"plural", moedaPlural_}}},
        {"digitosAno", digitosAno_},
        {"relatorio", relatorio},
        {"ultimoPapel", ultimoPapel_}};
}

void MemoriaImpressora::le_estado(const QJsonObject &o) {
    geracao_ = o.value(u"geracao").toInt();
    const QJsonObject bancos = o.value(u"bancos").toObject();
    for (auto i = bancos.begin(); i != bancos.end(); ++i)
        bancos_[i.key()] = i.value().toString();
    const QJsonObject favorecidos = o.value(u"favorecidos").toObject();
    for (auto i = favorecidos.begin(); i != favorecidos.end(); ++i)
        favorecidos_[i.key()] = i.value().toString();
    const QJsonObject moeda = o.value(u"moeda").toObject();
    moedaSingular_ = moeda.value(u"singular").toString(moedaSingular_);
    moedaPlural_ = moeda.value(u"plural").toString(moedaPlural_);
    const int digitos = o.value(u"digitosAno").toInt(4);
    digitosAno_ = digitos == 1 || digitos == 2 ? digitos : 4;
    for (const QJsonValue &v : o.value(u"relatorio").toArray())
        relatorio_.append(item_de(v.toObject()));
    ultimoPapel_ = o.value(u"ultimoPapel").toInt();
}

bool MemoriaImpressora::muda(const QJsonObject &mudanca) {
    if (!gravavel_) return false;
    const QString diario = ArquivoDiario();
    const qint64 antes = QFileInfo(diario).size();
    if (!acrescenta_inteiro(diario, QJsonDocument(mudanca).toJson(QJsonDocument::Compact) + '\n')) {
        // A failed write may still flush what it buffered when its file closes: the journal
        // is cut back here once more. If it can't be, a next change would be glued to a
        // broken line, so nothing more is written.
        if (!QFile::resize(diario, antes) || QFileInfo(diario).size() != antes) gravavel_ = false;
        return false;
    }
    executa(mudanca);
    return true;
}

void MemoriaImpressora::executa(const QJsonObject &m) {
    const QString op = m.value(u"op").toString();
    if (op == "banco") {
        bancos_[m.value(u"codigo").toString()] = m.value(u"posicoes").toString();
    } else if (op == "favorecido") {
        favorecidos_[m.value(u"codigo").toString()] = m.value(u"nome").toString();
    } else if (op == "exclui") {
        const QString codigo = m.value(u"codigo").toString();
        if (codigo == "*")
            favorecidos_.clear();
        else
            favorecidos_.remove(codigo);
    } else if (op == "moeda") {
        moedaSingular_ = m.value(u"singular").toString();
        moedaPlural_ = m.value(u"plural").toString();
    } else if (op == "ano") {
        digitosAno_ = m.value(u"digitos").toInt();
    } else if (op == "cheque") {
        relatorio_.append(item_de(m));
        ultimoPapel_ = std::max(ultimoPapel_, relatorio_.last().Papel);
    } else if (op == "papel") {
        ultimoPapel_ = std::max(ultimoPapel_, m.value(u"papel").toInt());
    } else if (op == "cancela") {
        if (m.value(u"opcao").toString() == "*") {
            for (ItemRelatorio &i : relatorio_)
                i.Cancelado = true;
        } else {
            const auto ultimo = std::find_if(relatorio_.rbegin(), relatorio_.rend(),
                                             [](const ItemRelatorio &i) { return !i.Cancelado; });
            if (ultimo != relatorio_.rend()) ultimo->Cancelado = true;
        }
    }
}

bool MemoriaImpressora::define_banco(const QString &codigo, const QString &posicoes) {
    return muda({{"op", "banco"}, {"codigo", codigo}, {"posicoes", posicoes}});
}

bool MemoriaImpressora::define_favorecido(const QString &codigo, const QString &nome) {
    return muda({{"op", "favorecido"}, {"codigo", codigo}, {"nome", nome}});
}

bool MemoriaImpressora::exclui_favorecido(const QString &codigo) {
    return muda({{"op", "exclui"}, {"codigo", codigo}});
}

bool MemoriaImpressora::define_moeda(const QString &singular, const QString &plural) {
    return muda({{"op", "moeda"}, {"singular", singular}, {"plural", plural}});
}

bool MemoriaImpressora::define_digitos_ano(int digitos) {
    return muda({{"op", "ano"}, {"digitos", digitos}});
}

bool MemoriaImpressora::registra_cheque(const ItemRelatorio &item) {
    QJsonObject m = item_json(item);
    m.remove("cancelado");
    m["op"] = "cheque";
    return muda(m);
}

bool MemoriaImpressora::registra_papel(int numero) {
    return muda({{"op", "papel"}, {"papel", numero}});
}

bool MemoriaImpressora::cancela(const QString &opcao) {
    return muda({{"op", "cancela"}, {"opcao", opcao}});
}

} // namespace vexa

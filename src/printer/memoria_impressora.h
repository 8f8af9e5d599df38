#pragma once
// The simulated printer's memory: bank layouts, payees, the currency's names, the year's
// digits on a date, the report of printed cheques and the number of the last sheet. It lives
// in its folder and survives a restart, as the printer's own memory does.
//
// memoria.json holds the whole state as it was at some start; memoria-G.diario, the journal
// of generation G named in memoria.json, holds every change since, one JSON line each,
// appended whole. A start reads both; it writes the state whole again (a new generation, and
// the old journal dropped) only when the journal has grown much larger than the state, so
// that an operation costs the same whatever the memory holds.
//
// A change first reaches the journal and only then the memory: a write that did not reach the
// disk whole leaves the files byte for byte as they were and the state unchanged, and the
// change answers false.
#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QString>

namespace vexa {

// A cheque in the report that the printer keeps.
struct ItemRelatorio {
    int Papel = 0; // the sheet's number
    QString Banco, Valor, Favorecido, Cidade, Data;
    bool Cancelado = false;
};

class MemoriaImpressora {
  public:
    // Reads the memory in pasta, or leaves the factory there (the preset banks under the
    // default layout) when there is none. An unreadable memory is set aside as
    // memoria.json.ilegivel; when it can't be, the printer starts from the factory without
    // touching it and keeps nothing (Gravavel false).
    explicit MemoriaImpressora(const QString &pasta);

    // False when the memory can't be kept: every change then answers false.
    bool Gravavel() const { return gravavel_; }

    const QMap<QString, QString> &Bancos() const { return bancos_; }
    const QMap<QString, QString> &Favorecidos() const { return favorecidos_; }
    QString MoedaSingular() const { return moedaSingular_; }
    QString MoedaPlural() const { return moedaPlural_; }
    int DigitosAno() const { return digitosAno_; }
    const QList<ItemRelatorio> &Relatorio() const { return relatorio_; }
    int UltimoPapel() const { return ultimoPapel_; }

    bool define_banco(const QString &codigo, const QString &posicoes);
    bool define_favorecido(const QString &codigo, const QString &nome);
    // "*" removes every payee.
    bool exclui_favorecido(const QString &codigo);
    bool define_moeda(const QString &singular, const QString &plural);
    bool define_digitos_ano(int digitos);
    // A printed cheque: its item in the report, and its sheet as the last one.
    bool registra_cheque(const ItemRelatorio &item);
    // A sheet of text begun.
    bool registra_papel(int numero);
    // "*" cancels every item, "u" the last one not yet cancelled.
    bool cancela(const QString &opcao);

    // The files of the memory now: the state and its journal.
    QString ArquivoEstado() const;
    QString ArquivoDiario() const;

  private:
    bool muda(const QJsonObject &mudanca);
    void executa(const QJsonObject &mudanca);
    QJsonObject estado() const;
    void le_estado(const QJsonObject &o);
    void de_fabrica();
    bool le();
    void le_diario();
    bool compacta();
    void poe_de_lado();

    QString pasta_;
    bool gravavel_ = true;
    int geracao_ = 0;

    QMap<QString, QString> bancos_;
    QMap<QString, QString> favorecidos_;
    QString moedaSingular_ = "Real", moedaPlural_ = "Reais";
    int digitosAno_ = 4;
    QList<ItemRelatorio> relatorio_;
    int ultimoPapel_ = 0;
};

} // namespace vexa

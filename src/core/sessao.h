#pragma once
// What every screen of a run shares: one Sessao, made at start and handed by reference.
#include <QString>
#include <QStringList>
#include <array>
#include <memory>

namespace vexa {

class BaseDados;
class Vexa32;
struct Medidor;

struct Sessao {
    Sessao();
    explicit Sessao(const QString &caminhoApp);
    ~Sessao();
    Sessao(const Sessao &) = delete;
    Sessao &operator=(const Sessao &) = delete;

    QString CaminhoIni;          // the settings file, VEXA.INI in the data folder
    QString CaminhoApp;          // the data folder: database, copy files, printer simulator
    QString NomeMDB = "VEXA.db"; // the database's name for messages
    QString PortaImpressora;     // port name for IniciaPorta
    QString TituloCfg = "0";     // title of the running configuration program, "0" when none
    QString Hoje6;               // the day of the run as ddmmyy; never refreshed
    QString MesAno;              // characters 3 to 6 of Hoje6
    qint16 PeriodoRel = 30;
    qint16 PeriodoCop = 30;
    qint16 UsaInvertida = 1;
    qint16 NumeroObrigatorio = 1;
    qint16 ChequesPorPagina = 55;
    qint16 ValidaCampos = 1;
    qint16 FechaTela = 0;
    qint16 TipoPesquisa = 0; // 0 payee, 1 city, 2 bank
    QString ResultadoPesquisa;

    // The layout a register screen hands to its graphic adjust, as text, from index 1:
    // AjusteL(1..) the lines, AjusteC(1..) the columns.
    std::array<QString, 12> AjusteL, AjusteC;
    // The register the print dialog lists: "Bancos", "Favorecido" or "Cidade"; for banks,
    // TabelaBancos 1 the cheque layouts and 2 the transfer layouts; TotalLista its records.
    QString TabelaLista;
    qint16 TabelaBancos = 0;
    int TotalLista = 0;
    qint16 FaseInicio = 1;
    qint16 MostraLogo = 1;

    // Shared texts of the conversions: the amount in words, and the month's name.
    QString ValorExtenso;
    QString MesNome;

    // The three comment lines of the last cheque printed, which a copy of it repeats.
    QStringList UltimoComentario{QString(), QString(), QString()};

    // The open database and its shared record sets. Both are owned by this one Sessao; a
    // shared_ptr takes its deleter where the object is made, so the run's record needs
    // neither the store's nor the printer's headers.
    std::shared_ptr<BaseDados> Banco;

    // The printer library in use (simulated or the real one).
    std::shared_ptr<Vexa32> Impressora;
    // The entry screen's gauge, which every print sweeps; null while that screen isn't open.
    Medidor *Gauge1 = nullptr;

    // Sets CaminhoApp and the paths that hang on it, and creates the folder.
    void DefineCaminho(const QString &caminhoApp);
    // Sets Hoje6 and MesAno from today's date.
    void DefineHoje();
    // Reads a numeric setting by the common pattern: the default, replaced by the
    // stored number when the key is present.
    qint16 LeNumero(const QString &secao, const QString &chave, qint16 padrao) const;
};

} // namespace vexa

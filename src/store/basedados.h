#pragma once
// The open database VEXA.db and the shared record set of each table.
#include "store/motor.h"
#include "store/recordset.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QString>
#include <map>

namespace vexa {

// The tables by the numbers the screens use for them.
enum Tabela : int {
    TabFavorecido = 0,
    TabCidade = 1,
    TabBancos = 2,
    TabLog = 3,
    TabTransferencia = 4,
    TabScript = 9,
};
// The table's name for a number; empty for a number that names none.
QString nome_tabela(int tabela);

class BaseDados {
  public:
    // caminho: the database file. Nothing is opened yet.
    explicit BaseDados(const QString &caminho);
    // The register the configuration names: a file, or a database on a server.
    explicit BaseDados(const ConfigBase &config);
    ~BaseDados();
    BaseDados(const BaseDados &) = delete;
    BaseDados &operator=(const BaseDados &) = delete;

    // Opens the file when it is not open yet, and brings a database of an earlier version up
    // to date. False when the file is missing, isn't a database of this program (a database is
    // never created here) or can't be read; Travada() then tells whether another program held
    // it locked. On a server: connects (again, when the connection was lost), and makes the
    // program's tables in a database that has none; false when the server can't be reached or
    // the database holds other tables.
    bool Abre();
    bool Travada() const { return travada_; }
    bool Aberta() const;
    QSqlDatabase db() const;
    QString Caminho() const { return caminho_; }
    const ConfigBase &Config() const { return config_; }
    bool NoServidor() const { return config_.motor == Motor::PostgreSQL; }

    // The shared record set of a table (closed until someone opens it).
    RecordSet &Conjunto(int tabela);

  private:
    bool abre_servidor();

    ConfigBase config_;
    QString caminho_;
    QString conexao_;
    bool travada_ = false;
    std::map<int, RecordSet> conjuntos_;
};

// Adds the SQL functions the program's selects use to a SQLite connection: CDBL(text) (a
// number typed in the Brazilian way, "1.234,56"; 0 when it isn't one) and CVDate(text) (a
// date "dd/mm/yy" or "dd/mm/yyyy" as its day number, for comparisons; NULL when it isn't
// one); and the collation TEXTO. LEFT is a keyword of SQLite: the left part of a field is
// substr(field, 1, n).
void registra_funcoes_sql(const QSqlDatabase &db);

// Names are compared as a directory orders them: without regard to case or accents, so that
// "banco" finds "Banco do Brasil" and "Álvaro" comes before "Zélia". The key of that order: the
// Latin letters without their accents, in lower case; other characters as they are. Each row
// keeps it in NomeChave, indexed, and the database writes it itself on every insert or change
// of the name, whoever writes; the collation TEXTO compares by it too.
QString chave_texto(const QString &texto);
// The same key in SQL, for the database's own triggers: statements' expressions, the first over
// expressao, each next one over coluna, which holds what the one before wrote.
QStringList chave_texto_sql(const QString &expressao, const QString &coluna);
// The texts that begin with a prefix, in the binary order of an index: those from the prefix
// up to, not including, the returned text. Empty when there is no such upper end.
QString fim_do_prefixo(const QString &prefixo);

// Brings a database of an earlier version up to date, keeping every row: the folded name of
// Bancos, Transferencia, Script, Favorecido and Cidade and the sortable date of Log, with their
// indexes and the triggers that keep them. False when it could not (nothing is changed then),
// with the database's error in erro.
bool atualiza_esquema(QSqlDatabase &db, QSqlError *erro = nullptr);

// The table of cheques written before their print and not yet registered (see
// store/registro_cheques.h), made at the opening of a database that hasn't it yet.
void cria_tabela_pendentes(QSqlDatabase &db);

// Text for an SQL string literal: the quotes doubled. For the places where the select is
// composed whole; values typed by the operator go bound instead wherever the select allows.
QString literal_sql(const QString &texto);

} // namespace vexa

#pragma once
// The two engines of the register: SQLite, the file VEXA.db in the data folder (the default,
// nothing to set up), and PostgreSQL, one database on a server shared by every desk of an
// office. The choice is section Sistema of VEXA.INI:
//
//   Banco=SQLite | PostgreSQL
//   Servidor=<host name, address or the folder of the server's Unix socket>
//   Porta=5432
//   BaseServidor=<database>     UsuarioServidor=<user>
//
// The password never sits in VEXA.INI: the server's client library reads it from the user's
// ~/.pgpass (or the file PGPASSFILE names).
//
// The screens' selects are written once, in the words SQLite takes; on the server each passes
// through dialeto() first. Both engines give the same rows in the same order: text columns
// compare by code point on both (the server's columns use collation "C"), names sort by their
// folded key, and CDBL/CVDate read amounts and dates alike.
#include "core/sessao.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QStringList>
#include <QVariantList>

namespace vexa {

enum class Motor { SQLite, PostgreSQL };

struct ConfigBase {
    Motor motor = Motor::SQLite;
    QString Arquivo; // SQLite: the database file
    QString Servidor, Base, Usuario;
    int Porta = 5432;
    // How the operator reads where the register is: the file's name, or "base em servidor".
    QString Descricao() const;
    bool operator==(const ConfigBase &) const = default;
};

// The engine and server the session's VEXA.INI names; SQLite on VEXA.db in the data folder when
// the key Banco is missing or names no engine.
ConfigBase le_config_base(const Sessao &s);
// The server VEXA.INI names, whichever engine is in use.
ConfigBase config_servidor(const Sessao &s);
// A register named on the command line: "postgresql://user@host:port/base" (a socket folder as
// host is written percent-encoded, "%2Ftmp%2Fpg"), or the path of a SQLite file.
ConfigBase config_de_endereco(const QString &endereco);

bool eh_postgres(const QSqlDatabase &db);

// The fields of the table of cheques written before their print (see store/registro_cheques.h).
inline constexpr const char *CamposPendente =
    "Banco, Valor, Favor, Local, Data, NRCH, Comentario, Comentario1, Comentario2, Parcela";

// The statement as the connection's engine takes it. On the server: identifiers in quotes go to
// lower case (the server's names are), LIKE compares without case as SQLite's does, and
// "campo = ? COLLATE NOCASE" compares the lower case of both sides.
QString dialeto(const QSqlDatabase &db, const QString &sql);
// Prepares the statement in the connection's dialect and binds valores in order.
bool prepara(QSqlQuery &q, const QString &sql, const QVariantList &valores = {});
// Prepares, binds and runs.
bool executa(QSqlQuery &q, const QString &sql, const QVariantList &valores = {});
// The number an INSERT made for the row: its rowid on SQLite; on the server the statement
// must end in retorna_id(db, coluna) and the number is read from its result.
QString retorna_id(const QSqlDatabase &db, const QString &coluna);
qint64 id_inserido(QSqlQuery &q);

// The tables of the program with their fields, in the spelling the program uses: the server
// keeps them in lower case, and a record read there gives its fields back in this spelling.
struct DefTabela {
    QString Nome;
    QStringList Campos;
    bool ChaveCodigo; // Codigo is the key
};
const QList<DefTabela> &tabelas_do_programa();
QString nome_do_programa(const QString &tabela, const QString &campo);

// Whether the server's connection is lost (a read or write failed on it): the next opening of
// the store then connects again.
bool conexao_perdida(const QSqlDatabase &db);
// Whether an error is the server unreachable or the connection lost.
bool erro_de_conexao(const QSqlError &erro);

// Makes the program's tables, functions, indexes and triggers in an empty database of the
// server, with the preset banks when padroes. False, with nothing made, when the database
// refused.
bool cria_esquema_servidor(QSqlDatabase &db, bool padroes, QSqlError *erro = nullptr);
// Sets on a connection of the server who and where its changes of Log are recorded under, and
// the day by which two-digit years are read.
void prepara_sessao_servidor(QSqlDatabase &db);

} // namespace vexa

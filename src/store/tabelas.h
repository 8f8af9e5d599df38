#pragma once
// The road to VEXA.db: opening and closing the tables, the shared lookups and searches, the
// marking of a cheque and the two purges of the start-up.
#include "core/desktop.h"
#include "core/sessao.h"
#include "store/basedados.h"

#include <QString>
#include <optional>

namespace vexa {

// At the first start: VEXA.db with its six tables and the preset banks under the default
// layout. An existing file is never touched.
void cria_base_dados(Sessao &s);
// A database file with the program's tables, and the preset banks when padroes. False when it
// could not be written.
bool cria_arquivo_base(const QString &arquivo, bool padroes = true);

// The session's database (VEXA.db in the data folder), not yet opened.
BaseDados &base_dados(Sessao &s);

// Opens the database and, for each flag set, the shared record set of that table over all
// its rows. -2 when the database can't be opened, 1 otherwise.
int AbreTabelas(Sessao &s, Desktop &d, int Bancos, int Favorecido, int Cidade, int Log,
                int Transferencia = 0);
// Closes the shared record sets flagged. The database stays open. Always 0.
int FechaTabelas(Sessao &s, int Bancos, int Favorecido, int Cidade, int Log);
// Closes one table's shared record set (Transferencia and Script are closed by their screens).
void fecha_tabela(Sessao &s, int Tabela);
// The shared record set of a table (see Tabela in store/basedados.h).
RecordSet &Conjunto(Sessao &s, int Tabela);

// Reopens the table's record set on the rows whose Codigo (Index for Log) is Chave, or all
// rows when Chave is empty. 1 when at least one row is there, 0 otherwise. Tabela 0 or 9 is
// Favorecido, 1 Cidade, 2 Bancos, 3 Log, 4 Transferencia.
int ExisteCodigo(Sessao &s, const QString &Chave, int Tabela);

// The bank's name, or "Inexistente". The city's name (empty when there is none). The
// payee's name, or empty. Each leaves its table's record set where the select put it.
QString NomeBanco(Sessao &s, const QString &Codigo);
// The bank's name, "Inexistente" when it isn't there, or none when the register couldn't be
// read (another program holds the database, or it is damaged).
std::optional<QString> le_nome_banco(Sessao &s, const QString &Codigo);
// Tells the operator that the registers can't be read now.
void avisa_registro_ilegivel(Desktop &d, const Sessao &s);
QString NomeCidade(Sessao &s, const QString &Codigo);
QString NomeFavorecido(Sessao &s, const QString &Codigo);

// Reopens a table's record set on the rows whose code (a numeric filter; for Log the bank)
// or name begins with Filtro, ordered by that field; all rows for an empty filter. Tabela:
// 0 Favorecido, 1 Cidade, 2 Bancos, 3 Log, 4 Transferencia, 9 Script; others do nothing.
void FiltraTabela(Sessao &s, const QString &Filtro, int Tabela);

// The search window's narrowing: Tipo 0 Favorecido, 1 Cidade, 2 Bancos; the record set
// reopened on the codes (numeric filter) or names that begin with Filtro. Others do nothing.
void PesquisaLista(Sessao &s, const QString &Filtro, int Tipo);

// Cancels ("C") or deletes (anything else) the cheque of that Index in Log; "Cheque nao
// registrado!" when there is none. Afterwards the shared set of Log holds that cheque.
// False when the database refused the write.
bool MarcaCheque(Sessao &s, Desktop &d, const QString &Index, const QString &Acao);
// The same for many cheques, in their order, through one prepared statement: a register of
// years is cancelled in seconds. The shared set of Log ends holding the last of them.
bool MarcaCheques(Sessao &s, Desktop &d, const QStringList &Indexes, const QString &Acao);

// The row of Log that decides whether the numbering goes on: a single cheque looks at the first
// row by Index, an instalment at the last.
enum class LinhaConferida { Primeira, Ultima };
// The Index of the next row of Log: the last row's plus 1, or "0000000001" in an empty
// register or one whose row Conferida has no Codigo. Reads those rows alone.
QString proximo_index(Sessao &s, LinhaConferida Conferida = LinhaConferida::Primeira);

// The purges of the start-up: issued cheques older than PeriodoRel days, and copy files
// older than PeriodoCop days, each after one question. The cheques purged are kept in
// VEXA-expurgo.db beside the database.
void ExpurgaCheques(Sessao &s, Desktop &d);
void ExpurgaCopias(Sessao &s, Desktop &d);

} // namespace vexa

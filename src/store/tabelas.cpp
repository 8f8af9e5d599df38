#include "store/tabelas.h"

#include "core/conversoes.h"
#include "store/bancos_padrao.h"
#include "store/historico.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>
#include <optional>
#include <utility>

namespace vexa {

namespace {

QString caminho_base(const Sessao &s) {
    return s.CaminhoApp + "/VEXA.db";
}

// The tables as the program reads and writes them: every field is text.
QStringList esquema() {
    QStringList sql;
    for (const DefTabela &t : tabelas_do_programa()) {
        QStringList campos;
        for (const QString &c : t.Campos)
            campos << (c == "Index" ? "\"Index\"" : c) + " TEXT";
        if (t.ChaveCodigo) campos[0] += " PRIMARY KEY";
        sql << "CREATE TABLE " + t.Nome + " (" + campos.join(", ") + ")";
    }
    // The register takes every row of a printed cheque: an Index that came out twice (from a
    // register whose first row lost its code) must not cost the row of a cheque on paper.
    sql << "CREATE INDEX LogIndex ON Log (\"Index\")";
    return sql;
}

} // namespace

bool cria_arquivo_base(const QString &arquivo, bool padroes) {
    const QString conexao = "vexa-cria-" + QUuid::createUuid().toString(QUuid::WithoutBraces);
    bool ok = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", conexao);
        db.setDatabaseName(arquivo);
        if (db.open()) {
            QSqlQuery q(db);
            ok = db.transaction();
            for (const QString &sql : esquema())
                ok = ok && q.exec(sql);
            for (const LinhaPadrao &l : padroes ? linhas_padrao() : QList<LinhaPadrao>()) {
                if (!ok) break;
                const QStringList marcas(l.Campos.size(), "?");
                ok = q.prepare("INSERT INTO " + l.Tabela + " VALUES (" + marcas.join(',') + ")");
                for (const QString &c : l.Campos)
                    q.addBindValue(c);
                ok = ok && q.exec();
            }
            ok = ok && db.commit();
            q.finish();
            ok = ok && atualiza_esquema(db);
            if (ok) cria_tabela_pendentes(db);
            db.close();
        }
    }
    QSqlDatabase::removeDatabase(conexao);
    return ok;
}

namespace {

// The select of ExisteCodigo: the rows of one code, or all of them.
QString select_codigo(int tabela, const QString &chave, QVariantList &valores) {
    const int t = tabela == TabScript ? TabFavorecido : tabela;
    const QString nome = nome_tabela(t);
    if (nome.isEmpty()) return {};
    QString sql = "Select * From " + nome;
    if (t == TabLog) {
        sql += " Where (\"Index\"=?)";
        valores << chave;
    } else if (!chave.isEmpty()) {
        sql += " Where (Codigo=?)";
        valores << chave;
    }
    return sql;
}

QString nome_de(Sessao &s, int tabela, const QString &codigo) {
    if (ExisteCodigo(s, codigo, tabela) == 0) return {};
    RecordSet &rs = Conjunto(s, tabela);
    rs.MoveFirst();
    return rs.Campo("Nome");
}

// The rows whose field begins with the text typed, ordered by that field. The text is bound,
// so every character the operator types is a letter, never a wildcard or a quote. Names compare
// as a directory orders them, by their folded key; both ways the index of the field serves.
QString comeca_com(const QString &campo, const QString &texto, QVariantList &valores) {
    const bool nome = campo == "Nome";
    const QString chave = nome ? chave_texto(texto) : texto;
    const QString coluna = nome ? QString(ColunaNomeChave) : campo;
    const QString ordem = nome ? coluna + ", Nome" : campo;
    const QString fim = fim_do_prefixo(chave);
    valores << chave;
    if (fim.isEmpty()) return " Where (" + coluna + " >= ?) Order by " + ordem;
    valores << fim;
    return " Where (" + coluna + " >= ? And " + coluna + " < ?) Order by " + ordem;
}

// The rows of Log older than the period: a date in the first eight characters before the day
// the period began. Rows without a date stay. A date "dd/mm/yy" is found by its sortable key,
// through its index; the two-digit years run over the hundred years that the program reads
// them in (see ano_completo), so the years before the limit are a range of keys that may
// wrap past "99". Other dates, which no key holds, are read as the program reads a date.
struct Vencidos {
    QString onde;
    QVariantList valores;
};

Vencidos log_vencido(const QDate &dia, int periodo) {
    const QDate limite = dia.addDays(-periodo);
    const int primeiro = dia.year() - 79, ultimo = dia.year() + 20;
    Vencidos v;
    v.onde = QString(" FROM Log WHERE (") + ColunaDataChave +
             " IS NULL AND ? - CVDate(substr(Data, 1, 8)) > ?)";
    v.valores << dia.toJulianDay() << periodo;
    if (limite.year() < primeiro) return v;
    const QString coluna = ColunaDataChave;
    if (limite.year() > ultimo) {
        v.onde += " OR " + coluna + " >= '000000'";
        return v;
    }
    const QString inicio =
        QStringLiteral("%1").arg(primeiro % 100, 2, 10, QLatin1Char('0')) + "0000";
    const QString fim = limite.toString("yyMMdd");
    if (inicio <= fim)
        v.onde += " OR (" + coluna + " >= ? AND " + coluna + " < ?)";
    else
        v.onde += " OR " + coluna + " >= ? OR (" + coluna + " >= '000000' AND " + coluna + " < ?)";
    v.valores << inicio << fim;
    return v;
}

// Before a purge deletes them, the rows go to VEXA-expurgo.db beside the database, in a table
// Log of the same fields and the day of the purge, in the same transaction as the delete: a
// purge either keeps its rows there or deletes nothing.
bool arquiva_e_apaga(QSqlDatabase &db, const QString &arquivo, const Vencidos &v, const QDate &dia,
                     Progresso &p) {
    // On a server the archive is two tables of the same database, written in the same
    // transaction.
    const bool servidor = eh_postgres(db);
    const QString arquivoLog = servidor ? "ExpurgoLog" : "expurgo.Log";
    const QString arquivoHistorico = servidor ? "ExpurgoHistorico" : "expurgo.Historico";
    QSqlQuery q(db);
    QStringList campos;
    if (servidor) {
        for (const QString &c : campos_historico())
            campos << '"' + c + '"';
    } else {
        if (!q.exec("PRAGMA main.table_info(Log)")) return false;
        while (q.next())
            if (q.value(1).toString().compare(ColunaDataChave, Qt::CaseInsensitive) != 0)
                campos << '"' + q.value(1).toString() + '"';
        q.finish();
        if (!executa(q, "ATTACH DATABASE ? AS expurgo", {arquivo})) return false;
    }
    // Years of cheques leave the register in one transaction: with room for the pages they
    // touch, the indexes are rewritten once instead of spilling to the journal as they go.
    // The connection gets its usual cache back afterwards.
    QString cache;
    if (!servidor && q.exec("PRAGMA main.cache_size") && q.next()) cache = q.value(0).toString();
    q.finish();
    if (!servidor) q.exec("PRAGMA main.cache_size = -32768");
    bool ok = db.transaction();
    p.Etapa("Guardando os cheques antigos em \"" + QFileInfo(arquivo).fileName() + "\"...");
    ok = ok && (servidor || q.exec("CREATE TABLE IF NOT EXISTS expurgo.Log (" +
                                   campos.join(" TEXT, ") + " TEXT, Expurgo TEXT)"));
    ok = ok && executa(q,
                       "INSERT INTO " + arquivoLog + " (" + campos.join(',') +
                           ", Expurgo) SELECT " + campos.join(',') + ", ?" + v.onde,
                       QVariantList{dia.toString("dd/MM/yyyy")} + v.valores);
    // The history of the rows archived goes with them, their purge its last entry.
    QStringList historico{"Id", "Quando", "Usuario", "Maquina", "Acao"};
    for (const QString &c : campos_historico())
        historico << '"' + c + '"';
    {
        const AcaoHistorico acao("Expurgo");
        p.Etapa("Excluindo os cheques antigos do registro...");
        ok = ok && !p.Cancelado() && executa(q, "DELETE" + v.onde, v.valores);
    }
    ok = ok &&
         (servidor || q.exec("CREATE TABLE IF NOT EXISTS expurgo.Historico (" +
                             historico.join(" TEXT, ") + " TEXT)")) &&
         executa(q,
                 "INSERT INTO " + arquivoHistorico + " SELECT " + historico.join(',') +
                     " FROM Historico WHERE \"Index\" IN (SELECT \"Index\" FROM " + arquivoLog +
                     " WHERE Expurgo = ?) AND Id NOT IN (SELECT Id FROM " + arquivoHistorico + ")",
                 {dia.toString("dd/MM/yyyy")});
    q.finish();
    // Cancelar leaves every cheque in the register and none in the archive.
    ok = ok && !p.Cancelado();
    if (ok)
        ok = db.commit();
    else
        db.rollback();
    if (servidor) return ok;
    q.exec("DETACH DATABASE expurgo");
    if (!cache.isEmpty()) q.exec("PRAGMA main.cache_size = " + cache);
    return ok;
}

} // namespace

BaseDados &base_dados(Sessao &s) {
    if (!s.Banco || s.Banco->Caminho() != caminho_base(s)) {
        s.Banco = std::make_unique<BaseDados>(le_config_base(s));
        s.NomeMDB = s.Banco->Config().Descricao();
    }
    return *s.Banco;
}

void cria_base_dados(Sessao &s) {
    // A server's database gets its tables at its first opening.
    if (base_dados(s).NoServidor()) return void(base_dados(s).Abre());
    const QString arquivo = caminho_base(s);
    if (QFileInfo::exists(arquivo)) return;
    // Made aside and renamed whole, so that a start cut short never leaves half a database
    // that the next start would take for a real one.
    const QString temporario = arquivo + ".novo";
    QFile::remove(temporario);
    if (cria_arquivo_base(temporario))
        QFile::rename(temporario, arquivo);
    else
        QFile::remove(temporario);
}

int AbreTabelas(Sessao &s, Desktop &d, int Bancos, int Favorecido, int Cidade, int Log,
                int Transferencia) {
    BaseDados &b = base_dados(s);
    if (!b.Abre()) {
        // The file is held by another program: the classic advice about file locking.
        if (b.Travada()) {
            d.MsgBox(QString());
            d.MsgBox("Instale uma linha semelhante a \n\"SHARE.EXE /L:500\" no seu arquivo "
                     "autoexec.bat!",
                     Botoes::OK, "Programa \"share.exe\" nao instalado!");
        }
        return -2;
    }
    const std::pair<int, int> pedidos[] = {{Bancos, TabBancos},
                                           {Favorecido, TabFavorecido},
                                           {Cidade, TabCidade},
                                           {Log, TabLog},
                                           {Transferencia, TabTransferencia}};
    for (const auto &[flag, tabela] : pedidos)
        if (flag == 1) b.Conjunto(tabela).Abre(b.db(), "Select * From " + nome_tabela(tabela));
    return 1;
}

int FechaTabelas(Sessao &s, int Bancos, int Favorecido, int Cidade, int Log) {
    if (Bancos) fecha_tabela(s, TabBancos);
    if (Favorecido) fecha_tabela(s, TabFavorecido);
    if (Cidade) fecha_tabela(s, TabCidade);
    if (Log) fecha_tabela(s, TabLog);
    return 0;
}

void fecha_tabela(Sessao &s, int Tabela) {
    if (s.Banco) s.Banco->Conjunto(Tabela).Close();
}

RecordSet &Conjunto(Sessao &s, int Tabela) {
    return base_dados(s).Conjunto(Tabela);
}

int ExisteCodigo(Sessao &s, const QString &Chave, int Tabela) {
    BaseDados &b = base_dados(s);
    if (!b.Abre()) return 0;
    QVariantList valores;
    const QString sql = select_codigo(Tabela, Chave, valores);
    if (sql.isEmpty()) return 0;
    const int t = Tabela == TabScript ? TabFavorecido : Tabela;
    RecordSet &rs = b.Conjunto(t);
    if (!rs.Abre(b.db(), sql, valores)) return 0;
    return rs.RecordCount() > 0 ? 1 : 0;
}

QString NomeBanco(Sessao &s, const QString &Codigo) {
    return le_nome_banco(s, Codigo).value_or("Inexistente");
}

std::optional<QString> le_nome_banco(Sessao &s, const QString &Codigo) {
    BaseDados &b = base_dados(s);
    if (!b.Abre()) return std::nullopt;
    QVariantList valores;
    const QString sql = select_codigo(TabBancos, Codigo, valores);
    RecordSet &rs = b.Conjunto(TabBancos);
    if (!rs.Abre(b.db(), sql, valores)) return std::nullopt;
    if (rs.RecordCount() == 0) return QStringLiteral("Inexistente");
    rs.MoveFirst();
    return rs.Campo("Nome");
}

void avisa_registro_ilegivel(Desktop &d, const Sessao &s) {
    d.MsgBox("O cadastro não pode ser lido agora: o banco de dados \"" + s.NomeMDB +
                 "\" está sendo usado por outro programa ou está danificado. Tente de novo em "
                 "seguida.",
             Botoes::OK, "Erro", Icone::Exclamacao);
}

QString NomeCidade(Sessao &s, const QString &Codigo) {
    return nome_de(s, TabCidade, Codigo);
}

QString NomeFavorecido(Sessao &s, const QString &Codigo) {
    return nome_de(s, TabFavorecido, Codigo);
}

void FiltraTabela(Sessao &s, const QString &Filtro, int Tabela) {
    const QString nome = nome_tabela(Tabela);
    if (nome.isEmpty()) return;
    BaseDados &b = base_dados(s);
    if (!b.Abre()) return;
    QString sql = "Select * From " + nome;
    QVariantList valores;
    if (!Filtro.isEmpty()) {
        QString campo = "Nome";
        if (eh_numerico(Filtro)) campo = Tabela == TabLog ? "Banco" : "Codigo";
        sql += comeca_com(campo, Filtro, valores);
    }
    b.Conjunto(Tabela).Abre(b.db(), sql, valores);
}

void PesquisaLista(Sessao &s, const QString &Filtro, int Tipo) {
    if (Tipo != TabFavorecido && Tipo != TabCidade && Tipo != TabBancos) return;
    BaseDados &b = base_dados(s);
    if (!b.Abre()) return;
    QString sql = "Select * From " + nome_tabela(Tipo);
    QVariantList valores;
    if (!Filtro.isEmpty()) {
        sql += comeca_com(eh_numerico(Filtro) ? "Codigo" : "Nome", Filtro, valores);
    }
    b.Conjunto(Tipo).Abre(b.db(), sql, valores);
}

bool MarcaCheque(Sessao &s, Desktop &d, const QString &Index, const QString &Acao) {
    return MarcaCheques(s, d, {Index}, Acao);
}

bool MarcaCheques(Sessao &s, Desktop &d, const QStringList &Indexes, const QString &Acao) {
    BaseDados &b = base_dados(s);
    if (Indexes.isEmpty() || !b.Abre()) return true;
    // The first row of each Index in the order of its select (the index of the field, then
    // the row's age), as a record set over that Index finds it.
    const QString linha = "rowid = (SELECT rowid FROM Log WHERE \"Index\" = ? ORDER BY "
                          "\"Index\", rowid LIMIT 1)";
    QSqlQuery q(b.db());
    prepara(q, Acao.toUpper() == "C" ? "UPDATE Log SET StCancel = 'C' WHERE " + linha
                                     : "DELETE FROM Log WHERE " + linha);
    bool gravou = true;
    for (const QString &Index : Indexes) {
        q.addBindValue(Index);
        if (!q.exec()) {
            gravou = false;
            continue;
        }
        if (q.numRowsAffected() == 0) d.MsgBox("Cheque nao registrado!");
    }
    ExisteCodigo(s, Indexes.last(), TabLog);
    return gravou;
}

QString proximo_index(Sessao &s, LinhaConferida Conferida) {
    QSqlQuery q(base_dados(s).db());
    // The Codigo and Index of the first or the last row by Index, through the index of the
    // field; none in an empty register.
    const auto linha = [&q](bool ultima) -> std::optional<std::pair<QString, QString>> {
        if (!executa(
                q, QStringLiteral("SELECT Codigo, \"Index\" FROM Log ORDER BY \"Index\"%1 LIMIT 1")
                       .arg(ultima ? " DESC" : "")) ||
            !q.next())
            return std::nullopt;
        return std::pair{q.value(0).toString(), q.value(1).toString()};
    };
    const auto ultima = linha(true);
    const auto conferida = Conferida == LinhaConferida::Ultima ? ultima : linha(false);
    if (!ultima || !conferida || conferida->first.isEmpty()) return "0000000001";
    return formata_numero(Val(ultima->second) + 1, "0000000000");
}

void ExpurgaCheques(Sessao &s, Desktop &d) {
    // The database alone: the question and the delete need no record set over Log.
    if (AbreTabelas(s, d, 0, 0, 0, 0) == -2) {
        // A locked database has been told as such already.
        if (!base_dados(s).Travada())
            d.MsgBox("O Banco de dados \"" + s.NomeMDB + "\" nao foi encontrado!");
        return;
    }
    const auto dia = le_data(s.Hoje6);
    if (!dia) return;
    QSqlDatabase db = base_dados(s).db();
    const Vencidos v = log_vencido(*dia, s.PeriodoRel);
    QSqlQuery q(db);
    if (!executa(q, "SELECT 1" + v.onde + " LIMIT 1", v.valores) || !q.next()) return;
    q.finish();
    const Resposta r =
        d.MsgBox("O banco de dados possui cheques cadastrados a mais de " +
                     QString::number(s.PeriodoRel).trimmed() +
                     " dia(s), contando a partir da data de apresentação. Deseja exclui-los?",
                 Botoes::YesNo);
    if (r != Resposta::Yes) return;
    const QString arquivo = QFileInfo(caminho_base(s)).dir().filePath("VEXA-expurgo.db");
    const auto p = d.AbreProgresso("Expurgo de Cheques");
    if (!arquiva_e_apaga(db, arquivo, v, *dia, *p) && !p->Cancelado())
        d.MsgBox("Os cheques antigos não foram excluídos: não foi possível guardá-los em \"" +
                     QFileInfo(arquivo).fileName() + "\".",
                 Botoes::OK, "Erro", Icone::Exclamacao);
}

void ExpurgaCopias(Sessao &s, Desktop &d) {
    const auto dia = le_data(s.Hoje6);
    if (!dia) return;
    QDir pasta(s.CaminhoApp);
    pasta.setNameFilters({"cop*.*"});
    pasta.setFilter(QDir::Files);
    pasta.setSorting(QDir::Name | QDir::IgnoreCase);
    bool perguntou = false;
    for (const QString &nome : pasta.entryList()) {
        if (nome.size() != 10) continue;
        const QString data = nome.mid(3, 2) + "/" + nome.mid(5, 2) + "/" + nome.mid(8, 2);
        const auto quando = le_data(data);
        if (!quando || !DataValida(nome.mid(3, 4) + nome.mid(8, 2))) continue;
        if (quando->daysTo(*dia) <= s.PeriodoCop) continue;
        if (!perguntou) {
            perguntou = true;
            const Resposta r =
                d.MsgBox("O aplicativo possui arquivos de copia com mais de " +
                             QString::number(s.PeriodoCop).trimmed() + " dias! Deseja exclui-los?",
                         Botoes::YesNo);
            if (r != Resposta::Yes) return;
        }
        pasta.remove(nome);
    }
}

} // namespace vexa

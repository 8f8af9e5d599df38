#include "store/basedados.h"
#include "store/historico.h"
#include "store/leitura_direta.h"

#include "core/conversoes.h"

#include <QFileInfo>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QSysInfo>
#include <QUuid>
#include <sqlite3.h>

namespace vexa {

QString nome_tabela(int tabela) {
    switch (tabela) {
    case TabFavorecido:
        return "Favorecido";
    case TabCidade:
        return "Cidade";
    case TabBancos:
        return "Bancos";
    case TabLog:
        return "Log";
    case TabTransferencia:
        return "Transferencia";
    case TabScript:
        return "Script";
    }
    return {};
}

namespace {

// The letters the key folds: A to Z, and the accented and other Latin letters of the
// Latin-1 and Latin Extended-A blocks, each with what it becomes (its base letter in lower
// case). Kept to a table, so that the database's triggers fold exactly as the program does.
const QList<QPair<char32_t, QString>> &letras_dobradas() {
    static const QList<QPair<char32_t, QString>> tabela = [] {
        QList<QPair<char32_t, QString>> t;
        for (char32_t c = 'A'; c <= 'Z'; ++c)
            t.append({c, QString(QChar(c - 'A' + 'a'))});
        for (char32_t c = 0xC0; c <= 0x17F; ++c) {
            QString dobrada;
            for (const QChar x : QString(QChar(c)).normalized(QString::NormalizationForm_D))
                if (x.category() != QChar::Mark_NonSpacing) dobrada.append(x);
            dobrada = dobrada.toCaseFolded();
            if (dobrada != QString(QChar(c))) t.append({c, dobrada});
        }
        return t;
    }();
    return tabela;
}

} // namespace

QString chave_texto(const QString &texto) {
    static const QHash<char32_t, QString> mapa = [] {
        QHash<char32_t, QString> m;
        for (const auto &[c, d] : letras_dobradas())
            m.insert(c, d);
        return m;
    }();
    QString chave;
    chave.reserve(texto.size());
    for (const char32_t c : texto.toUcs4()) {
        const auto d = mapa.constFind(c);
        if (d != mapa.constEnd())
            chave += *d;
        else
            chave += QString::fromUcs4(&c, 1);
    }
    return chave;
}

QStringList chave_texto_sql(const QString &expressao, const QString &coluna) {
    // SQLite's parser takes only so many nested calls: the letters go in steps.
    constexpr int PorPasso = 24;
    QStringList passos;
    const auto &letras = letras_dobradas();
    for (int i = 0; i < letras.size(); i += PorPasso) {
        QString sql = passos.isEmpty() ? expressao : coluna;
        for (int j = i; j < std::min<int>(i + PorPasso, letras.size()); ++j)
            sql = "replace(" + sql + ",'" + QString::fromUcs4(&letras[j].first, 1) + "','" +
                  letras[j].second + "')";
        passos.append(sql);
    }
    return passos;
}

QString fim_do_prefixo(const QString &prefixo) {
    QList<uint> c = prefixo.toUcs4();
    while (!c.isEmpty()) {
        uint &ultimo = c.last();
        if (ultimo < 0x10FFFF) {
            ultimo = ultimo == 0xD7FF ? 0xE000 : ultimo + 1;
            return QString::fromUcs4(reinterpret_cast<const char32_t *>(c.constData()), c.size());
        }
        c.removeLast();
    }
    return {};
}

QString literal_sql(const QString &texto) {
    return "'" + QString(texto).replace('\'', "''") + "'";
}

namespace {

QString texto_arg(sqlite3_value *v) {
    const auto *p = reinterpret_cast<const char *>(sqlite3_value_text(v));
    return p ? QString::fromUtf8(p) : QString();
}

int colacao_texto(void *, int n1, const void *a, int n2, const void *b) {
    const QString x = chave_texto(QString::fromUtf8(static_cast<const char *>(a), n1));
    const QString y = chave_texto(QString::fromUtf8(static_cast<const char *>(b), n2));
    return x.compare(y);
}

void sql_cdbl(sqlite3_context *ctx, int, sqlite3_value **argv) {
    sqlite3_result_double(ctx, valor_numerico(texto_arg(argv[0])));
}

void sql_cvdate(sqlite3_context *ctx, int, sqlite3_value **argv) {
    const auto data = le_data(texto_arg(argv[0]).trimmed());
    if (!data) return sqlite3_result_null(ctx);
    sqlite3_result_int64(ctx, data->toJulianDay());
}

} // namespace

void registra_funcoes_sql(const QSqlDatabase &db) {
    sqlite3 *s = conexao_sqlite(db);
    if (!s) return;
    const int f = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    sqlite3_create_function(s, "CDBL", 1, f, nullptr, sql_cdbl, nullptr, nullptr);
    sqlite3_create_function(s, "CVDate", 1, f, nullptr, sql_cvdate, nullptr, nullptr);
    sqlite3_create_collation(s, "TEXTO", SQLITE_UTF8, nullptr, colacao_texto);
}

BaseDados::BaseDados(const QString &caminho)
    : caminho_(caminho), conexao_("vexa-" + QUuid::createUuid().toString(QUuid::WithoutBraces)) {
    config_.Arquivo = caminho;
}

BaseDados::BaseDados(const ConfigBase &config) : BaseDados(config.Arquivo) {
    config_ = config;
}

BaseDados::~BaseDados() {
    conjuntos_.clear();
    if (QSqlDatabase::contains(conexao_)) {
        QSqlDatabase::database(conexao_, false).close();
        QSqlDatabase::removeDatabase(conexao_);
    }
}

bool BaseDados::Aberta() const {
    return QSqlDatabase::contains(conexao_) && QSqlDatabase::database(conexao_, false).isOpen();
}

QSqlDatabase BaseDados::db() const {
    return QSqlDatabase::database(conexao_, false);
}

namespace {

// The date of a cheque as "yymmdd", which sorts as the days of one century do; empty for a row
// without a date; NULL for a date the database can't read as "dd/mm/yy", which the purge then
// reads as the program reads dates. The date goes through a modifier, which moves a day such
// as 31/02 on and so tells it from a real one.
QString data_chave_sql(const QString &data) {
    const QString dia = "substr(" + data + ",1,2)", mes = "substr(" + data + ",4,2)",
                  ano = "substr(" + data + ",7,2)";
    const QString iso = "'20'||" + ano + "||'-'||" + mes + "||'-'||" + dia;
    return "CASE WHEN trim(ifnull(" + data + ",'')) = '' THEN '' WHEN substr(" + data +
           ",1,8) GLOB '[0-9][0-9]/[0-9][0-9]/[0-9][0-9]' AND date(" + iso +
           ",'+0 days') = " + iso + " THEN " + ano + "||" + mes + "||" + dia + " END";
}

// The version of the tables this program writes, in the database's user_version: 1 brought
// the folded names and the cheques' date key, 2 the register's index by bank, 3 the cheque
// books, the index by bank and number, and the history of the register.
constexpr int VersaoEsquema = 3;

// The folded name of every register and the date key of every cheque, kept by triggers.
template <typename Executa> bool chaves_guardadas(QSqlQuery &q, const Executa &executa) {
    bool ok = true;
    for (const QString tabela : {"Bancos", "Transferencia", "Script", "Favorecido", "Cidade"}) {
        const QString atribui = "UPDATE " + tabela + " SET " + ColunaNomeChave + " = ";
        QString corpo;
        for (const QString &passo : chave_texto_sql("NEW.Nome", ColunaNomeChave))
            corpo += atribui + passo + " WHERE rowid = NEW.rowid; ";
        ok = ok && executa(q, "ALTER TABLE " + tabela + " ADD COLUMN " + ColunaNomeChave + " TEXT");
        for (const QString &passo : chave_texto_sql("Nome", ColunaNomeChave))
            ok = ok && executa(q, atribui + passo);
        ok = ok &&
             executa(q, "CREATE INDEX " + tabela + "NomeChave ON " + tabela + " (" +
                            ColunaNomeChave + ", Nome)") &&
             executa(q, "CREATE TRIGGER " + tabela + "ChaveInclui AFTER INSERT ON " + tabela +
                            " BEGIN " + corpo + "END") &&
             executa(q, "CREATE TRIGGER " + tabela + "ChaveAltera AFTER UPDATE OF Nome ON " +
                            tabela + " BEGIN " + corpo + "END");
    }
    const QString data = data_chave_sql("NEW.Data");
    ok =
        ok && executa(q, QString("ALTER TABLE Log ADD COLUMN ") + ColunaDataChave + " TEXT") &&
        executa(q, QString("UPDATE Log SET ") + ColunaDataChave + " = " + data_chave_sql("Data")) &&
        executa(q, QString("CREATE INDEX LogDataChave ON Log (") + ColunaDataChave + ")") &&
        executa(q, "CREATE INDEX IF NOT EXISTS LogIndex ON Log (\"Index\")") &&
        executa(q, QString("CREATE TRIGGER LogDataInclui AFTER INSERT ON Log BEGIN UPDATE Log "
                           "SET ") +
                       ColunaDataChave + " = " + data + " WHERE rowid = NEW.rowid; END") &&
        executa(q, QString("CREATE TRIGGER LogDataAltera AFTER UPDATE OF Data ON Log BEGIN "
                           "UPDATE Log SET ") +
                       ColunaDataChave + " = " + data + " WHERE rowid = NEW.rowid; END");
    return ok;
}
// The next number of each bank's book, and the history, which the database keeps from any
// change or delete.
template <typename Executa> bool historico_e_talao(QSqlQuery &q, const Executa &executa) {
    QStringList campos;
    for (const QString &c : campos_historico())
        campos << '"' + c + "\" TEXT";
    return executa(q, "CREATE TABLE IF NOT EXISTS Talao (Banco TEXT PRIMARY KEY, Proximo TEXT)") &&
           executa(q, "CREATE INDEX IF NOT EXISTS LogNumero ON Log (Banco, NRCH)") &&
           executa(q, "CREATE TABLE IF NOT EXISTS Historico (Id INTEGER PRIMARY KEY "
                      "AUTOINCREMENT, Quando TEXT, Usuario TEXT, Maquina TEXT, Acao TEXT, " +
                          campos.join(", ") + ")") &&
           executa(q, "CREATE INDEX IF NOT EXISTS HistoricoIndex ON Historico (\"Index\")") &&
           executa(q, "CREATE TRIGGER IF NOT EXISTS HistoricoFixo BEFORE UPDATE ON Historico "
                      "BEGIN SELECT RAISE(ABORT, 'O histórico não se altera'); END") &&
           executa(q, "CREATE TRIGGER IF NOT EXISTS HistoricoGuardado BEFORE DELETE ON "
                      "Historico BEGIN SELECT RAISE(ABORT, 'O histórico não se apaga'); END");
}
} // namespace

bool atualiza_esquema(QSqlDatabase &db, QSqlError *erro) {
    QSqlQuery q(db);
    const auto executa = [erro](QSqlQuery &q, const QString &sql) {
        if (q.exec(sql)) return true;
        if (erro) *erro = q.lastError();
        return false;
    };
    if (!executa(q, "PRAGMA user_version") || !q.next()) return false;
    const int versao = q.value(0).toInt();
    if (versao >= VersaoEsquema) return true;
    q.finish();
    if (!db.transaction()) {
        if (erro) *erro = db.lastError();
        return false;
    }
    bool ok = versao >= 1 || chaves_guardadas(q, executa);
    // The report's filter by bank reads one bank's rows in the order of Index.
    ok = ok && executa(q, "CREATE INDEX IF NOT EXISTS LogBanco ON Log (Banco, \"Index\")");
    // A cheque's number is looked up in its bank's rows before every print.
    ok = ok && (versao >= 3 || historico_e_talao(q, executa));
    ok = ok && executa(q, "PRAGMA user_version = " + QString::number(VersaoEsquema));
    q.finish();
    if (ok) return db.commit();
    db.rollback();
    return false;
}

bool BaseDados::abre_servidor() {
    if (Aberta() && !conexao_perdida(db())) return true;
    // A connection lost with the server: the sets read through it are gone with it.
    for (auto &[tabela, conjunto] : conjuntos_)
        conjunto.Close();
    QSqlDatabase db = QSqlDatabase::contains(conexao_)
                          ? QSqlDatabase::database(conexao_, false)
                          : QSqlDatabase::addDatabase("QPSQL", conexao_);
    db.close();
    db.setHostName(config_.Servidor);
    db.setPort(config_.Porta);
    db.setDatabaseName(config_.Base);
    db.setUserName(config_.Usuario);
    db.setConnectOptions("connect_timeout=5;application_name='Vexa Plus'");
    if (!db.open()) return false;
    QSqlQuery q(db);
    // The program's tables, or none in a new database; anything else isn't ours.
    q.exec("SELECT count(*) FROM pg_tables WHERE schemaname = current_schema() AND tablename IN "
           "('bancos','transferencia','script','favorecido','cidade','log')");
    const int tabelas = q.next() ? q.value(0).toInt() : -1;
    q.finish();
    if ((tabelas != 0 && tabelas != 6) || (tabelas == 0 && !cria_esquema_servidor(db, true))) {
        db.close();
        return false;
    }
    prepara_sessao_servidor(db);
    // The desk: the computer and its data folder.
    q.prepare("SELECT set_config('vexa.mesa', ?, false)");
    q.addBindValue(QSysInfo::machineHostName() + ":" + QFileInfo(caminho_).absolutePath());
    q.exec();
    prepara_historico(db);
    return true;
}

bool BaseDados::Abre() {
    if (NoServidor()) return abre_servidor();
    if (Aberta()) return true;
    travada_ = false;
    // SQLite would make an empty file where none is: a missing database is an error here.
    if (!QFileInfo(caminho_).isFile()) return false;
    QSqlDatabase db = QSqlDatabase::contains(conexao_)
                          ? QSqlDatabase::database(conexao_, false)
                          : QSqlDatabase::addDatabase("QSQLITE", conexao_);
    db.setDatabaseName(caminho_);
    db.setConnectOptions("QSQLITE_BUSY_TIMEOUT=3000");
    if (!db.open()) return false;
    QSqlQuery q(db);
    const bool nossa = q.exec("SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name IN "
                              "('Bancos','Transferencia','Script','Favorecido','Cidade','Log')") &&
                       q.next() && q.value(0).toInt() == 6;
    // SQLite opens a file without touching it: a lock held by another program shows at the
    // first read.
    const QString codigo = q.lastError().nativeErrorCode();
    travada_ = codigo == "5" || codigo == "6";
    q.finish();
    QSqlError erro;
    if (!nossa || !atualiza_esquema(db, &erro)) {
        travada_ = travada_ || erro.nativeErrorCode() == "5" || erro.nativeErrorCode() == "6";
        db.close();
        return false;
    }
    cria_tabela_pendentes(db);
    // The registers are read whole by the lists: mapped, a page costs no copy.
    q.exec("PRAGMA mmap_size = 268435456");
    q.finish();
    registra_funcoes_sql(db);
    prepara_historico(db);
    return true;
}

RecordSet &BaseDados::Conjunto(int tabela) {
    return conjuntos_[tabela];
}

} // namespace vexa

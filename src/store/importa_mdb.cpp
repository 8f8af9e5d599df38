#include "store/importa_mdb.h"

#include "core/conversoes.h"
#include "store/bancos_padrao.h"
#include "store/leitura_direta.h"
#include "store/tabelas.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QSqlQuery>
#include <mdbtools.h>
#include <optional>
#include <sqlite3.h>
#include <vector>

namespace vexa {

namespace {

struct Esquema {
    const char *tabela;
    QStringList campos; // the key first
};

// The six tables of the old file, in the order read: the layouts before the register, so that
// the register's banks can be looked up in them.
const QList<Esquema> &esquemas() {
    static const QList<Esquema> e = [] {
        const auto serie = [](const QString &letra, int n) {
            QStringList l;
            for (int i = 1; i <= n; ++i)
                l << letra + QString::number(i);
            return l;
        };
        return QList<Esquema>{
            {"Bancos", QStringList{"Codigo", "Nome"} + serie("L", 5) + serie("C", 8)},
            {"Transferencia", QStringList{"Codigo", "Nome"} + serie("L", 7) + serie("C", 7)},
            {"Script", QStringList{"Codigo", "Nome"} + serie("l", 8) + serie("c", 11)},
            {"Favorecido", {"Codigo", "Nome"}},
            {"Cidade", {"Codigo", "Nome"}},
            {"Log",
             {"Index", "Codigo", "Banco", "V_CH", "Favor", "Local", "Data", "NRCH", "Comentario",
              "Comentario1", "Comentario2", "StCancel"}},
        };
    }();
    return e;
}

QString numero(qint64 n) {
    return formata_numero(double(n), "#,##0");
}

// The old file through mdbtools, opened read-only. A table's rows come with every text field
// bound: an empty text and a NULL both read as empty.
class ArquivoMdb {
  public:
    explicit ArquivoMdb(const QString &caminho) {
        if (!QFileInfo(caminho).isFile()) return;
        mdb_ = mdb_open(QFile::encodeName(caminho).constData(), MDB_NOFLAGS);
        if (mdb_ && !mdb_read_catalog(mdb_, MDB_TABLE)) fecha();
    }
    ~ArquivoMdb() { fecha(); }
    ArquivoMdb(const ArquivoMdb &) = delete;
    ArquivoMdb &operator=(const ArquivoMdb &) = delete;

    bool Aberto() const { return mdb_; }

    // The user table of that name, compared without case; null when the file has none.
    MdbTableDef *Tabela(const QString &nome) {
        for (guint i = 0; i < mdb_->catalog->len; ++i) {
            auto *e = static_cast<MdbCatalogEntry *>(g_ptr_array_index(mdb_->catalog, i));
            if (e->object_type != MDB_TABLE || !mdb_is_user_table(e) ||
                QString::fromUtf8(e->object_name).compare(nome, Qt::CaseInsensitive) != 0)
                continue;
            MdbTableDef *t = mdb_read_table(e);
            if (t && !mdb_read_columns(t)) {
                mdb_free_tabledef(t);
                return nullptr;
            }
            return t;
        }
        return nullptr;
    }

    size_t TamanhoLigacao() const { return mdb_->bind_size; }

  private:
    void fecha() {
        if (mdb_) mdb_close(mdb_);
        mdb_ = nullptr;
    }
    MdbHandle *mdb_ = nullptr;
};

// One table read: its fields bound in the order of the program's schema.
class LeituraTabela {
  public:
    LeituraTabela(MdbTableDef *t, const QStringList &campos, size_t tamanho) : t_(t) {
        buffers_.resize(campos.size());
        tamanhos_.resize(campos.size());
        for (guint i = 0; i < t->num_cols; ++i) {
            auto *c = static_cast<MdbColumn *>(g_ptr_array_index(t->columns, i));
            const QString nome = QString::fromUtf8(c->name);
            int j = 0;
            while (j < campos.size() && campos[j].compare(nome, Qt::CaseInsensitive) != 0)
                ++j;
            if (j == campos.size()) {
                a_mais << nome;
                continue;
            }
            buffers_[j].assign(tamanho, '\0');
            mdb_bind_column(t, int(i) + 1, buffers_[j].data(), &tamanhos_[j]);
        }
        for (int j = 0; j < campos.size(); ++j)
            if (buffers_[j].empty()) faltam << campos[j];
        mdb_rewind_table(t);
    }
    ~LeituraTabela() { mdb_free_tabledef(t_); }
    LeituraTabela(const LeituraTabela &) = delete;
    LeituraTabela &operator=(const LeituraTabela &) = delete;

    int Declaradas() const { return int(t_->num_rows); }
    bool Proxima() { return mdb_fetch_row(t_); }
    // The field j of the row as UTF-8 bytes, without copying.
    QByteArrayView Campo(int j) const {
        return QByteArrayView(buffers_[j].data(), qsizetype(std::max(0, tamanhos_[j])));
    }

    QStringList faltam, a_mais;

  private:
    MdbTableDef *t_;
    std::vector<std::vector<char>> buffers_;
    std::vector<int> tamanhos_;
};

// SQLite straight: the rows of a large register go in through one prepared statement each
// table, with no QVariant between the file and the database.
class Comando {
  public:
    Comando(sqlite3 *db, const QString &sql) {
        sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &st_, nullptr);
    }
    ~Comando() { sqlite3_finalize(st_); }
    Comando(const Comando &) = delete;
    Comando &operator=(const Comando &) = delete;
    bool Preparado() const { return st_; }
    void Liga(int i, QByteArrayView v) {
        sqlite3_bind_text(st_, i + 1, v.data() ? v.data() : "", int(v.size()), SQLITE_TRANSIENT);
    }
    bool Executa() {
        const int r = sqlite3_step(st_);
        sqlite3_reset(st_);
        return r == SQLITE_DONE;
    }

  private:
    sqlite3_stmt *st_ = nullptr;
};

bool executa(sqlite3 *db, const QString &sql) {
    return sqlite3_exec(db, sql.toUtf8().constData(), nullptr, nullptr, nullptr) == SQLITE_OK;
}

qint64 conta(const QSqlDatabase &db, const QString &sql) {
    LeituraDireta l(db, sql);
    return l.Proxima() ? l.Inteiro(0) : -1;
}

QString aspas(const QString &nome) {
    return '"' + nome + '"';
}

// A value of the register the program can't read: an amount that isn't one, a date that isn't
// one. Empty when the row reads well.
QStringList duvidas_do_registro(const LeituraTabela &l) {
    QStringList d;
    const QString indice = QString::fromUtf8(l.Campo(0));
    const QString valor = QString::fromUtf8(l.Campo(3)), data = QString::fromUtf8(l.Campo(6));
    if (!centavos(valor)) d << "Log, Index " + indice + ": V_CH \"" + valor + "\" não é um valor.";
    if (!data.trimmed().isEmpty() && !le_data(data))
        d << "Log, Index " + indice + ": Data \"" + data + "\" não é uma data.";
    return d;
}

// Takes away the triggers that fold a table's name on insert, and gives back their statements;
// empty when the database refused.
std::optional<QStringList> suspende_gatilhos_chave(sqlite3 *db, const QSqlDatabase &qdb,
                                                   const QString &tabela) {
    QStringList nomes, sql;
    for (LeituraDireta l(qdb,
                         "SELECT name, sql FROM sqlite_master WHERE type = 'trigger' AND "
                         "tbl_name = ? AND sql LIKE '%AFTER INSERT%' AND sql LIKE ?",
                         {tabela, QString("%") + ColunaNomeChave + "%"});
         l.Proxima();) {
        nomes << l.Texto(0);
        sql << l.Texto(1);
    }
    for (const QString &n : nomes)
        if (!executa(db, "DROP TRIGGER " + aspas(n))) return std::nullopt;
    return sql;
}

// The presets of a new store that the old file's banks replace: all rows of the other tables,
// and the banks of the codes the old file has.
bool esvazia(sqlite3 *db, bool tudo) {
    bool ok = true;
    for (const Esquema &e : esquemas())
        if (tudo || QString(e.tabela) != "Bancos")
            ok = ok && executa(db, QString("DELETE FROM ") + e.tabela);
    return ok;
}

} // namespace

bool base_tem_dados(Sessao &s, Desktop &d) {
    if (AbreTabelas(s, d, 0, 0, 0, 0) == -2) return false;
    const QSqlDatabase db = s.Banco->db();
    for (const char *t : {"Log", "Favorecido", "Cidade"})
        if (conta(db, QString("SELECT count(*) FROM ") + t) != 0) return true;
    // A new store comes with a bank, a transfer layout and a copy layout for each preset bank:
    // those are not the office's data.
    QStringList presets;
    for (const auto &b : bancos_padrao())
        presets << literal_sql(b.first);
    for (const char *t : {"Bancos", "Script", "Transferencia"})
        if (conta(db, QString("SELECT count(*) FROM ") + t + " WHERE Codigo NOT IN (" +
                          presets.join(',') + ")") != 0)
            return true;
    return false;
}

bool copia_base(Sessao &s, const QString &destino) {
    if (!s.Banco || !s.Banco->Abre() || QFileInfo::exists(destino)) return false;
    QSqlQuery q(s.Banco->db());
    return q.exec("VACUUM INTO " + literal_sql(destino));
}

ImportacaoMdb importa_mdb(Sessao &s, Desktop &d, const QString &arquivoMdb, Progresso &progresso,
                          bool substitui) {
    ImportacaoMdb r;
    const auto recusa = [&r](const QString &motivo) {
        r.fim = ImportacaoMdb::Fim::Recusado;
        r.problemas << motivo;
        return r;
    };
    ArquivoMdb mdb(arquivoMdb);
    if (!mdb.Aberto())
        return recusa("O arquivo \"" + QFileInfo(arquivoMdb).fileName() +
                      "\" não pôde ser aberto como banco de dados do Vexa antigo.");
    // The import writes through SQLite's own interface, for its speed.
    if (base_dados(s).NoServidor())
        return recusa("O registro está no servidor: importe o arquivo num computador com o "
                      "registro no próprio arquivo (Banco=SQLite no VEXA.INI) e leve-o depois ao "
                      "servidor com \"vexa --copia-registro\".");
    if (AbreTabelas(s, d, 0, 0, 0, 0) == -2)
        return recusa("A base de dados \"" + s.NomeMDB + "\" não pôde ser aberta.");
    const bool tem_dados = base_tem_dados(s, d);
    if (tem_dados && !substitui) return recusa("A base de dados já tem cheques ou cadastros.");
    // The shared record sets read the tables that are about to change; they are opened again
    // by whoever needs them.
    for (const int t : {TabBancos, TabFavorecido, TabCidade, TabLog, TabTransferencia, TabScript})
        fecha_tabela(s, t);

    const QSqlDatabase qdb = s.Banco->db();
    sqlite3 *db = conexao_sqlite(qdb);
    if (!db || !executa(db, "BEGIN IMMEDIATE"))
        return recusa("A base de dados \"" + s.NomeMDB + "\" está em uso por outro programa.");
    // The banks of a new store, of which those the old file lacks stay.
    QSet<QString> bancos_antes;
    for (LeituraDireta b(qdb, "SELECT Codigo FROM Bancos"); !tem_dados && b.Proxima();)
        bancos_antes.insert(b.Texto(0));
    bool gravou = esvazia(db, tem_dados);
    bool cancelado = false;

    for (const Esquema &e : esquemas()) {
        if (!gravou || cancelado) break;
        const QString nome = e.tabela;
        MdbTableDef *t = mdb.Tabela(nome);
        if (!t) {
            r.problemas << "O arquivo não tem a tabela " + nome + ".";
            continue;
        }
        LeituraTabela l(t, e.campos, mdb.TamanhoLigacao());
        for (const QString &c : l.faltam)
            r.problemas << "A tabela " + nome + " do arquivo não tem o campo " + c + ".";
        for (const QString &c : l.a_mais)
            r.ignorados << nome + "." + c;
        if (!l.faltam.isEmpty()) continue;
        progresso.Etapa("Lendo a tabela " + nome + "...", l.Declaradas());

        QStringList colunas;
        for (const QString &c : e.campos)
            colunas << aspas(c);
        // The folded name goes in with the row, made by the store's own fold, while the
        // trigger that would make it row by row waits: a register of 99,999 payees goes in
        // in seconds, not in minutes. The trigger is back before the transaction ends.
        const auto suspensos = suspende_gatilhos_chave(db, qdb, nome);
        if (!suspensos) {
            gravou = false;
            break;
        }
        const QStringList gatilhos = *suspensos;
        const bool comChave = !gatilhos.isEmpty();
        if (comChave) colunas << ColunaNomeChave;
        // The old file's bank replaces a preset of the same code.
        Comando insere(db, QString(nome == "Bancos" ? "INSERT OR REPLACE" : "INSERT") + " INTO " +
                               nome + " (" + colunas.join(',') + ") VALUES (" +
                               QString("?,").repeated(colunas.size()).chopped(1) + ")");
        if (!insere.Preparado()) {
            gravou = false;
            break;
        }
        int lidas = 0, vazias = 0;
        while (l.Proxima()) {
            bool vazia = true;
            for (int j = 0; j < e.campos.size() && vazia; ++j)
                vazia = l.Campo(j).isEmpty();
            // A damaged page can read as rows with every field empty: never a real row.
            if (vazia) {
                ++vazias;
                continue;
            }
            for (int j = 0; j < e.campos.size(); ++j)
                insere.Liga(j, l.Campo(j));
            if (comChave)
                insere.Liga(int(e.campos.size()),
                            chave_texto(QString::fromUtf8(l.Campo(1))).toUtf8());
            if (!insere.Executa()) {
                gravou = false;
                break;
            }
            if (nome == "Log")
                r.duvidosas << duvidas_do_registro(l);
            else if (nome == "Bancos")
                r.bancos << QString::fromUtf8(l.Campo(0));
            else if (nome == "Transferencia")
                r.transferencias << QString::fromUtf8(l.Campo(0));
            if (++lidas % 1024 == 0) {
                progresso.Valor(lidas);
                if (progresso.Cancelado()) {
                    cancelado = true;
                    break;
                }
            }
        }
        for (const QString &g : gatilhos)
            gravou = gravou && executa(db, g);
        if (!gravou || cancelado) break;
        progresso.Valor(lidas);
        r.linhas << qMakePair(nome, lidas);
        if (lidas != l.Declaradas()) {
            QString motivo = "A tabela " + nome + " do arquivo tem " + numero(l.Declaradas()) +
                             " linhas, e só " + numero(lidas) + " puderam ser lidas";
            if (vazias > 0) motivo += " (" + numero(vazias) + " linhas vazias)";
            r.problemas << motivo + ": o arquivo está danificado ou incompleto.";
            continue;
        }
        // What the store holds now, against what the file declares.
        qint64 esperadas = lidas;
        if (nome == "Bancos") {
            for (const QString &c : r.bancos)
                bancos_antes.remove(c);
            r.predefinidos_mantidos = int(bancos_antes.size());
            esperadas += r.predefinidos_mantidos;
        }
        if (conta(qdb, "SELECT count(*) FROM " + nome) != esperadas)
            r.problemas << "A tabela " + nome + " não ficou com as " + numero(lidas) +
                               " linhas lidas do arquivo.";
        if (progresso.Cancelado()) cancelado = true;
    }

    if (gravou && !cancelado) {
        LeituraDireta sem(qdb, "SELECT Banco, count(*) FROM Log WHERE Banco NOT IN (SELECT Codigo "
                               "FROM Bancos) GROUP BY Banco ORDER BY Banco");
        while (sem.Proxima())
            r.bancos_sem_leiaute << sem.Texto(0) + " (" + numero(sem.Inteiro(1)) + " cheques)";
    }
    const QString recusada = "A base de dados não aceitou a gravação: o disco está cheio ou o "
                             "arquivo não aceita gravação.";
    if (!gravou) r.problemas << recusada;
    if (cancelado || !gravou || !r.problemas.isEmpty()) {
        executa(db, "ROLLBACK");
        r.fim = cancelado && gravou ? ImportacaoMdb::Fim::Cancelado : ImportacaoMdb::Fim::Recusado;
        if (r.fim == ImportacaoMdb::Fim::Cancelado) r.problemas.clear();
        return r;
    }
    if (!executa(db, "COMMIT")) {
        r.problemas << recusada;
        executa(db, "ROLLBACK");
        return r;
    }
    r.fim = ImportacaoMdb::Fim::Importado;
    return r;
}

} // namespace vexa

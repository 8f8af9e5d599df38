#include "store/recordset.h"
#include "store/leitura_direta.h"
#include "store/motor.h"

#include <QRegularExpression>
#include <QSqlRecord>

namespace vexa {

namespace {
// Rows read by one statement: enough to make a walk cost what one select costs, few enough
// that a list painting one screen reads little more than it shows.
constexpr int TamanhoBloco = 256;
constexpr std::size_t BlocosGuardados = 8;

// "Select * From <table> <rest>": the table and the rest (where, order).
const QRegularExpression &forma_select() {
    static const QRegularExpression re(R"(^\s*select\s+\*\s+from\s+\[?(\w+)\]?(.*)$)",
                                       QRegularExpression::CaseInsensitiveOption |
                                           QRegularExpression::DotMatchesEverythingOption);
    return re;
}

bool coluna_interna(const QString &nome) {
    return nome.compare(QLatin1String(ColunaNomeChave), Qt::CaseInsensitive) == 0 ||
           nome == QLatin1String("rowid") ||
           nome.compare(QLatin1String(ColunaDataChave), Qt::CaseInsensitive) == 0;
}

QString aspas(const QString &nome) {
    return '"' + nome + '"';
}

// Changes made through this connection and commits of other connections: while both stand
// still, a select gives the rows it gave before.
// On the server, its snapshot: the transactions committed and those still running, which no
// commit anywhere leaves as they were.
QPair<qint64, qint64> versao_dados(const QSqlDatabase &db) {
    if (eh_postgres(db)) {
        QSqlQuery q(db);
        if (!q.exec(QStringLiteral("SELECT pg_current_snapshot()::text")) || !q.next())
            return {-1, -1};
        return {qint64(qHash(q.value(0).toString())), 0};
    }
    QSqlQuery q(db);
    q.setForwardOnly(true);
    if (!q.exec(QStringLiteral("SELECT total_changes(), data_version FROM pragma_data_version")) ||
        !q.next())
        return {-1, -1};
    return {q.value(0).toLongLong(), q.value(1).toLongLong()};
}

QString lista_colunas(const QStringList &campos) {
    QStringList r;
    for (const QString &c : campos)
        r.append(aspas(c));
    return r.join(',');
}
} // namespace

bool RecordSet::Abre(const QSqlDatabase &db, const QString &sql, const QVariantList &valores) {
    Close();
    const auto m = forma_select().match(sql);
    if (!m.hasMatch()) return false;
    db_ = db;
    sql_ = sql;
    tabela_ = m.captured(1);
    valores_ = valores;

    QSqlQuery q(db_);
    if (!q.exec(QStringLiteral("SELECT * FROM %1 LIMIT 0").arg(tabela_))) return false;
    const QSqlRecord r = q.record();
    const bool servidor = eh_postgres(db_);
    for (int i = 0; i < r.count(); ++i)
        if (!coluna_interna(r.fieldName(i)))
            campos_.append(servidor ? nome_do_programa(tabela_, r.fieldName(i)) : r.fieldName(i));
    // Without an order of its own a set comes in the order of its key, the first field.
    QString resto = m.captured(2);
    if (!resto.contains(QStringLiteral("order by"), Qt::CaseInsensitive) && !campos_.isEmpty())
        resto += QStringLiteral(" ORDER BY \"%1\"").arg(campos_.first());
    // Rows of equal keys come in the order they were written, as SQLite's indexes give them.
    if (servidor) resto += QStringLiteral(", rowid");
    resto_ = dialeto(db_, resto);
    // The select reads the keys alone: the rows are read in blocks when reached, so that a
    // register of 99,999 names opens in the time of a list of integers and shows at once the
    // rows on the screen.
    sqlChaves_ = QStringLiteral("SELECT rowid FROM %1%2").arg(tabela_, resto_);
    if (!le_chaves()) {
        Close();
        return false;
    }
    aberto_ = true;
    return true;
}

bool RecordSet::le_chaves() {
    LeituraDireta q(db_, sqlChaves_, valores_);
    if (q.Falhou()) return false;
    versao_ = versao_dados(db_);
    chaves_.clear();
    esquece_blocos();
    while (q.Proxima())
        chaves_.append(q.Inteiro(0));
    if (q.Falhou()) {
        chaves_.clear();
        return false;
    }
    apagado_.fill(false, chaves_.size());
    apagados_ = 0;
    pos_ = chaves_.isEmpty() ? -1 : 0;
    modo_ = Modo::Nada;
    return true;
}

QList<QStringList> RecordSet::Colunas(const QStringList &nomes) const {
    QList<QStringList> linhas;
    if (!aberto_ || nomes.isEmpty()) return linhas;
    LeituraDireta q(
        db_,
        dialeto(db_,
                QStringLiteral("SELECT %1 FROM %2%3").arg(lista_colunas(nomes), tabela_, resto_)),
        valores_);
    linhas.reserve(chaves_.size());
    while (q.Proxima()) {
        QStringList linha;
        linha.reserve(nomes.size());
        for (int c = 0; c < nomes.size(); ++c)
            linha.append(q.Texto(c));
        linhas.append(std::move(linha));
    }
    if (q.Falhou()) linhas.clear();
    return linhas;
}

RecordSet RecordSet::Copia() const {
    RecordSet copia;
    if (!aberto_) return copia;
    if (versao_.first < 0 || versao_dados(db_) != versao_) {
        copia.Abre(db_, sql_, valores_);
        return copia;
    }
    copia.db_ = db_;
    copia.sql_ = sql_;
    copia.tabela_ = tabela_;
    copia.sqlChaves_ = sqlChaves_;
    copia.resto_ = resto_;
    copia.valores_ = valores_;
    copia.aberto_ = true;
    copia.versao_ = versao_;
    copia.chaves_ = chaves_;
    copia.apagado_ = apagado_;
    copia.apagados_ = apagados_;
    copia.campos_ = campos_;
    // The rows read since the select; the lists of rows are shared until one side changes.
    copia.blocos_ = blocos_;
    copia.pos_ = chaves_.isEmpty() ? -1 : 0;
    copia.pula_apagados(1);
    return copia;
}

bool RecordSet::Requery() {
    if (!aberto_) return false;
    return le_chaves();
}

void RecordSet::Close() {
    aberto_ = false;
    chaves_.clear();
    apagado_.clear();
    apagados_ = 0;
    pos_ = -1;
    campos_.clear();
    esquece_blocos();
    leitura_.reset();
    modo_ = Modo::Nada;
    buffer_.clear();
    db_ = QSqlDatabase();
}

void RecordSet::esquece_blocos() const {
    blocos_.clear();
}

void RecordSet::pula_apagados(int passo) {
    while (pos_ >= 0 && pos_ < int(chaves_.size()) && apagado_[pos_])
        pos_ += passo;
}

void RecordSet::MoveFirst() {
    pos_ = 0;
    pula_apagados(1);
}

void RecordSet::MoveLast() {
    pos_ = int(chaves_.size()) - 1;
    pula_apagados(-1);
}

void RecordSet::MoveNext() {
    if (pos_ < int(chaves_.size())) ++pos_;
    pula_apagados(1);
}

void RecordSet::MovePrevious() {
    if (pos_ >= 0) --pos_;
    pula_apagados(-1);
}

int RecordSet::Coluna(const QString &nome) const {
    for (int i = 0; i < campos_.size(); ++i)
        if (campos_[i].compare(nome, Qt::CaseInsensitive) == 0) return i;
    return -1;
}

// The row at a position of the keys, read with the block around it; null for a deleted row or
// one that is no longer in the table.
const QStringList *RecordSet::linha_na(int posicao) const {
    if (posicao < 0 || posicao >= int(chaves_.size()) || apagado_[posicao]) return nullptr;
    const int numero = posicao / TamanhoBloco;
    auto achado = blocos_.find(numero);
    if (achado == blocos_.end()) {
        if (blocos_.size() >= BlocosGuardados) {
            auto velho = blocos_.begin();
            for (auto b = blocos_.begin(); b != blocos_.end(); ++b)
                if (b->second.uso < velho->second.uso) velho = b;
            blocos_.erase(velho);
        }
        if (!leitura_) {
            QStringList marcas;
            for (int i = 0; i < TamanhoBloco; ++i)
                marcas.append(QStringLiteral("?"));
            leitura_ = std::make_unique<QSqlQuery>(db_);
            leitura_->setForwardOnly(true);
            prepara(*leitura_, QStringLiteral("SELECT rowid, %1 FROM %2 WHERE rowid IN (%3)")
                                   .arg(lista_colunas(campos_), tabela_, marcas.join(',')));
        }
        const int inicio = numero * TamanhoBloco;
        const int fim = std::min<int>(inicio + TamanhoBloco, chaves_.size());
        QHash<qint64, int> lugar;
        lugar.reserve(fim - inicio);
        for (int i = 0; i < TamanhoBloco; ++i) {
            // Past the end the last key is repeated: the statement keeps its one shape.
            const qint64 chave = chaves_[std::min(inicio + i, fim - 1)];
            leitura_->bindValue(i, chave);
            if (inicio + i < fim) lugar.insert(chave, i);
        }
        Bloco bloco;
        bloco.linhas.resize(fim - inicio);
        if (leitura_->exec()) {
            const int n = campos_.size();
            while (leitura_->next()) {
                const auto l = lugar.constFind(leitura_->value(0).toLongLong());
                if (l == lugar.constEnd()) continue;
                QStringList &linha = bloco.linhas[*l];
                linha.reserve(n);
                for (int c = 1; c <= n; ++c)
                    linha.append(leitura_->value(c).toString());
            }
        }
        leitura_->finish();
        achado = blocos_.emplace(numero, std::move(bloco)).first;
    }
    achado->second.uso = ++usos_;
    const auto &linhas = achado->second.linhas;
    const int i = posicao % TamanhoBloco;
    return i < linhas.size() && !linhas[i].isEmpty() ? &linhas[i] : nullptr;
}

QStringList RecordSet::Linha(int i) const {
    if (i < 0 || i >= RecordCount()) return {};
    int posicao = i;
    if (apagados_ > 0) {
        // Rows deleted through the set stay among its keys until the next select.
        posicao = -1;
        for (int vivas = -1; vivas < i;)
            if (!apagado_[++posicao]) ++vivas;
    }
    const QStringList *linha = linha_na(posicao);
    return linha ? *linha : QStringList();
}

QString RecordSet::Campo(const QString &nome) const {
    const int c = Coluna(nome);
    if (c < 0) return {};
    if (modo_ != Modo::Nada) return buffer_.value(c);
    const QStringList *linha = linha_na(pos_);
    return linha ? linha->value(c) : QString();
}

void RecordSet::AddNew() {
    if (!aberto_) return;
    modo_ = Modo::Novo;
    buffer_ = QStringList();
    for (int i = 0; i < campos_.size(); ++i)
        buffer_.append(QString());
}

void RecordSet::Edit() {
    if (!aberto_ || Eof() || Bof()) return;
    const QStringList *linha = linha_na(pos_);
    modo_ = Modo::Editando;
    buffer_ = linha ? *linha : QStringList();
    while (buffer_.size() < campos_.size())
        buffer_.append(QString());
}

void RecordSet::Define(const QString &campo, const QString &valor) {
    const int c = Coluna(campo);
    if (c < 0 || modo_ == Modo::Nada) return;
    buffer_[c] = valor;
}

bool RecordSet::Update() {
    if (modo_ == Modo::Nada) return false;
    QSqlQuery q(db_);
    if (modo_ == Modo::Novo) {
        QStringList marcas;
        for (int i = 0; i < campos_.size(); ++i)
            marcas.append("?");
        prepara(q, QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                           .arg(tabela_, lista_colunas(campos_), marcas.join(',')) +
                       retorna_id(db_, "rowid"));
    } else {
        QStringList atribuicoes;
        for (const QString &c : campos_)
            atribuicoes.append(aspas(c) + " = ?");
        prepara(
            q,
            QStringLiteral("UPDATE %1 SET %2 WHERE rowid = ?").arg(tabela_, atribuicoes.join(',')));
    }
    for (const QString &v : buffer_)
        q.addBindValue(v);
    if (modo_ == Modo::Editando) q.addBindValue(chaves_[pos_]);
    if (!q.exec()) {
        erro_ = q.lastError();
        return false;
    }
    if (modo_ == Modo::Novo) {
        chaves_.append(id_inserido(q));
        apagado_.append(false);
        if (pos_ < 0) pos_ = 0;
    }
    modo_ = Modo::Nada;
    buffer_.clear();
    esquece_blocos();
    return true;
}

void RecordSet::CancelUpdate() {
    modo_ = Modo::Nada;
    buffer_.clear();
}

bool RecordSet::Delete() {
    if (!aberto_ || pos_ < 0 || pos_ >= int(chaves_.size()) || apagado_[pos_]) return false;
    QSqlQuery q(db_);
    prepara(q, QStringLiteral("DELETE FROM %1 WHERE rowid = ?").arg(tabela_));
    q.addBindValue(chaves_[pos_]);
    if (!q.exec()) {
        erro_ = q.lastError();
        return false;
    }
    apagado_[pos_] = true;
    ++apagados_;
    // The row stays in its block, skipped as deleted.

    return true;
}

} // namespace vexa

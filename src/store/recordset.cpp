#include "store/recordset.h"

#include <QRegularExpression>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

namespace vexa {

namespace {
// "Select * From <table> <rest>": the table and the rest (where, order).
const QRegularExpression &forma_select() {
    static const QRegularExpression re(R"(^\s*select\s+\*\s+from\s+\[?(\w+)\]?(.*)$)",
                                       QRegularExpression::CaseInsensitiveOption |
                                           QRegularExpression::DotMatchesEverythingOption);
    return re;
}

void liga_valores(QSqlQuery &q, const QVariantList &valores) {
    for (const QVariant &v : valores)
        q.addBindValue(v);
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
    if (!q.exec(QStringLiteral("SELECT * FROM \"%1\" LIMIT 0").arg(tabela_))) return false;
    const QSqlRecord r = q.record();
    for (int i = 0; i < r.count(); ++i)
        campos_.append(r.fieldName(i));
    // Without an order of its own a set comes in the order of its key, the first field.
    QString resto = m.captured(2);
    if (!resto.contains(QStringLiteral("order by"), Qt::CaseInsensitive) && !campos_.isEmpty())
        resto += QStringLiteral(" ORDER BY \"%1\"").arg(campos_.first());
    sqlChaves_ = QStringLiteral("SELECT rowid FROM \"%1\"%2").arg(tabela_, resto);
    if (!le_chaves()) {
        Close();
        return false;
    }
    aberto_ = true;
    return true;
}

bool RecordSet::le_chaves() {
    QSqlQuery q(db_);
    q.setForwardOnly(true);
    if (!q.prepare(sqlChaves_)) return false;
    liga_valores(q, valores_);
    if (!q.exec()) return false;
    chaves_.clear();
    while (q.next())
        chaves_.append(q.value(0).toLongLong());
    apagado_.fill(false, chaves_.size());
    apagados_ = 0;
    pos_ = chaves_.isEmpty() ? -1 : 0;
    lida_ = -2;
    modo_ = Modo::Nada;
    return true;
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
    linha_.clear();
    lida_ = -2;
    modo_ = Modo::Nada;
    buffer_.clear();
    db_ = QSqlDatabase();
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

int RecordSet::coluna(const QString &nome) const {
    for (int i = 0; i < campos_.size(); ++i)
        if (campos_[i].compare(nome, Qt::CaseInsensitive) == 0) return i;
    return -1;
}

void RecordSet::le_linha() const {
    if (lida_ == pos_) return;
    lida_ = pos_;
    linha_.clear();
    if (pos_ < 0 || pos_ >= int(chaves_.size()) || apagado_[pos_]) return;
    QSqlQuery q(db_);
    q.prepare(QStringLiteral("SELECT * FROM \"%1\" WHERE rowid = ?").arg(tabela_));
    q.addBindValue(chaves_[pos_]);
    if (!q.exec() || !q.next()) return;
    for (int i = 0; i < campos_.size(); ++i)
        linha_.append(q.value(i).toString());
}

QString RecordSet::Campo(const QString &nome) const {
    const int c = coluna(nome);
    if (c < 0) return {};
    if (modo_ != Modo::Nada) return buffer_.value(c);
    le_linha();
    return linha_.value(c);
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
    le_linha();
    modo_ = Modo::Editando;
    buffer_ = linha_;
    while (buffer_.size() < campos_.size())
        buffer_.append(QString());
}

void RecordSet::Define(const QString &campo, const QString &valor) {
    const int c = coluna(campo);
    if (c < 0 || modo_ == Modo::Nada) return;
    buffer_[c] = valor;
}

bool RecordSet::Update() {
    if (modo_ == Modo::Nada) return false;
    QStringList colunas;
    for (const QString &c : campos_)
        colunas.append('"' + c + '"');
    QSqlQuery q(db_);
    if (modo_ == Modo::Novo) {
        QStringList marcas;
        for (int i = 0; i < campos_.size(); ++i)
            marcas.append("?");
        q.prepare(QStringLiteral("INSERT INTO \"%1\" (%2) VALUES (%3)")
                      .arg(tabela_, colunas.join(','), marcas.join(',')));
    } else {
        QStringList atribuicoes;
        for (const QString &c : colunas)
            atribuicoes.append(c + " = ?");
        q.prepare(QStringLiteral("UPDATE \"%1\" SET %2 WHERE rowid = ?")
                      .arg(tabela_, atribuicoes.join(',')));
    }
    for (const QString &v : buffer_)
        q.addBindValue(v);
    if (modo_ == Modo::Editando) q.addBindValue(chaves_[pos_]);
    if (!q.exec()) return false;
    if (modo_ == Modo::Novo) {
        chaves_.append(q.lastInsertId().toLongLong());
        apagado_.append(false);
        if (pos_ < 0) pos_ = 0;
    }
    modo_ = Modo::Nada;
    buffer_.clear();
    lida_ = -2;
    return true;
}

void RecordSet::CancelUpdate() {
    modo_ = Modo::Nada;
    buffer_.clear();
}

bool RecordSet::Delete() {
    if (!aberto_ || pos_ < 0 || pos_ >= int(chaves_.size()) || apagado_[pos_]) return false;
    QSqlQuery q(db_);
    q.prepare(QStringLiteral("DELETE FROM \"%1\" WHERE rowid = ?").arg(tabela_));
    q.addBindValue(chaves_[pos_]);
    if (!q.exec()) return false;
    apagado_[pos_] = true;
    ++apagados_;
    lida_ = -2;
    return true;
}

} // namespace vexa

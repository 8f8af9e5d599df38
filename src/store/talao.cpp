#include "store/talao.h"

#include "core/conversoes.h"
#include "store/historico.h"
#include "store/motor.h"
#include "store/tabelas.h"

#include <QSqlQuery>
#include <QVariant>

namespace vexa {

namespace {

bool so_algarismos(const QString &t) {
    if (t.isEmpty()) return false;
    for (const QChar c : t)
        if (c < u'0' || c > u'9') return false;
    return true;
}

// Whether the book standing at `atual` is already past `proposto`: both numbers of digits alone,
// compared by value.
bool ja_adiante(const QString &atual, const QString &proposto) {
    if (!so_algarismos(atual) || !so_algarismos(proposto)) return false;
    return atual.toULongLong() > proposto.toULongLong();
}

} // namespace

std::optional<QString> proximo_numero(const QString &numero) {
    int inicio = int(numero.size());
    while (inicio > 0 && numero[inicio - 1] >= u'0' && numero[inicio - 1] <= u'9')
        --inicio;
    if (inicio == numero.size()) return std::nullopt;
    QString digitos = numero.mid(inicio);
    int i = int(digitos.size()) - 1;
    for (; i >= 0 && digitos[i] == u'9'; --i)
        digitos[i] = u'0';
    if (i < 0)
        digitos.prepend(u'1');
    else
        digitos[i] = QChar(digitos[i].unicode() + 1);
    return numero.left(inicio) + digitos;
}

QString proximo_cheque(Sessao &s, const QString &Banco) {
    BaseDados &b = base_dados(s);
    if (!b.Abre()) return {};
    QSqlQuery q(b.db());
    if (!executa(q, "SELECT Proximo FROM Talao WHERE Banco = ?", {Banco.trimmed()}) || !q.next())
        return {};
    return q.value(0).toString();
}

bool grava_proximo_cheque(Sessao &s, const QString &Banco, const QString &Numero) {
    BaseDados &b = base_dados(s);
    if (!b.Abre()) return false;
    QSqlQuery q(b.db());
    if (Numero.trimmed().isEmpty())
        return executa(q, "DELETE FROM Talao WHERE Banco = ?", {Banco.trimmed()});
    return executa(q,
                   "INSERT INTO Talao (Banco, Proximo) VALUES (?, ?) ON CONFLICT (Banco) DO "
                   "UPDATE SET Proximo = excluded.Proximo",
                   {Banco.trimmed(), Numero.trimmed()});
}

bool avanca_talao(Sessao &s, const QString &Banco, const QString &Numero) {
    const std::optional<QString> seguinte = proximo_numero(Numero.trimmed());
    if (!seguinte) return true;
    if (ja_adiante(proximo_cheque(s, Banco), *seguinte)) return true;
    return grava_proximo_cheque(s, Banco, *seguinte);
}

std::optional<ChequeRegistrado> cheque_registrado(Sessao &s, const QString &Banco,
                                                  const QString &Numero) {
    if (Numero.trimmed().isEmpty()) return std::nullopt;
    BaseDados &b = base_dados(s);
    if (!b.Abre()) return std::nullopt;
    QSqlQuery q(b.db());
    if (!executa(q,
                 "SELECT \"Index\", Data, Favor, V_CH, StCancel FROM Log WHERE Banco = ? AND "
                 "NRCH = ? ORDER BY rowid LIMIT 1",
                 {Banco.trimmed(), Numero.trimmed()}) ||
        !q.next())
        return std::nullopt;
    return ChequeRegistrado{q.value(0).toString(), q.value(1).toString(),
                            q.value(2).toString().trimmed(), q.value(3).toString(),
                            q.value(4).toString().trimmed() == "C"};
}

QString descreve_duplicado(const QString &Numero, const ChequeRegistrado &c) {
    return "O cheque nº " + Numero.trimmed() + " deste banco já está no relatório" +
           (c.Cancelado ? " (cancelado)" : QString()) + ":\n\nData: " + c.Data.trimmed() +
           "\nFavorecido: " + c.Favorecido + "\nValor: R$ " +
           mascara_valor(c.Valor, "###,##0.00").trimmed();
}

bool inutiliza_folha(Sessao &s, const QString &Index) {
    BaseDados &b = base_dados(s);
    if (!b.Abre()) return false;
    QSqlQuery q(b.db());
    if (!executa(q, "SELECT Comentario, Comentario1, Comentario2 FROM Log WHERE \"Index\" = ?",
                 {Index}) ||
        !q.next())
        return false;
    QStringList linhas = {q.value(0).toString(), q.value(1).toString(), q.value(2).toString()};
    q.finish();
    // The reason goes on the first empty comment line; with all three in use, after the last.
    int vazia = 0;
    while (vazia < 3 && !linhas[vazia].trimmed().isEmpty())
        ++vazia;
    if (vazia < 3)
        linhas[vazia] = FolhaInutilizada;
    else
        linhas[2] += " — " + FolhaInutilizada;
    const AcaoHistorico acao("Folha inutilizada");
    return executa(q,
                   "UPDATE Log SET StCancel = 'C', Comentario = ?, Comentario1 = ?, Comentario2 = "
                   "? WHERE \"Index\" = ?",
                   {linhas[0], linhas[1], linhas[2], Index}) &&
           q.numRowsAffected() > 0;
}

} // namespace vexa

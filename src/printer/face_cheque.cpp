#include "printer/face_cheque.h"

#include "core/conversoes.h"
#include "core/relogio.h"
#include "printer/extenso.h"
#include "printer/papel.h"

#include <QDate>
#include <QRegularExpression>

namespace vexa {

namespace {

QString digitos_ano(int ano, int digitos) {
    const QString quatro = QStringLiteral("%1").arg(ano, 4, 10, QChar(u'0'));
    return quatro.right(digitos);
}

void poe(QStringList &grade, int linha, int coluna, const QString &texto) {
    if (linha < 1 || linha > LinhasFace || coluna < 1 || coluna > ColunasFace) return;
    QString &l = grade[linha - 1];
    for (qsizetype i = 0; i < texto.size() && coluna - 1 + i < ColunasFace; ++i)
        l[coluna - 1 + i] = texto[i];
}

} // namespace

bool posicoes_validas(const QString &posicoes) {
    static const QRegularExpression numero("^[0-9]{1,3}$");
    const QStringList valores = posicoes.split(u',');
    if (valores.size() != 13) return false;
    for (const QString &v : valores)
        if (!numero.match(v.trimmed()).hasMatch()) return false;
    return true;
}

QList<CampoFace> campos_face(const ModeloFace &modelo, const QString &Valor,
                             const QString &Favorecido, const QString &Cidade, const QString &Data,
                             const QMap<int, CampoExtra> &extras) {
    QList<int> p;
    for (const QString &v : modelo.Posicoes.split(u','))
        p << v.trimmed().toInt();
    if (p.size() != 13) return {};
    const int L1 = p[0], L2 = p[1], L3 = p[2], L4 = p[3], L5 = p[4];
    const int C1 = p[5], C2 = p[6], C3 = p[7], C4 = p[8], C5 = p[9];
    const int C6 = p[10], C7 = p[11], C8 = p[12];

    const std::optional<qint64> cents = centavos(Valor);
    if (!cents || *cents <= 0 || *cents > ExtensoMaximo) return {};
    static const QRegularExpression data("^([0-9]{1,2})/([0-9]{1,2})/([0-9]{2}|[0-9]{4})$");
    const auto m = data.match(Data.trimmed());
    if (!m.hasMatch()) return {};
    const int ano =
        m.captured(3).size() == 4 ? m.captured(3).toInt() : ano_completo(m.captured(3).toInt());
    const QDate dia(ano, m.captured(2).toInt(), m.captured(1).toInt());
    if (!dia.isValid()) return {};

    // The words break at a blank where the first line reaches the last column; the second
    // line is closed with "*" so that nothing can be written after the words.
    const QString palavras = extenso(*cents, modelo.Singular, modelo.Plural);
    const int largura1 = qMax(1, ColunasFace - C2 + 1);
    const int largura2 = qMax(1, ColunasFace - C3 + 1);
    QString linha1 = palavras, resto;
    if (palavras.size() > largura1) {
        QString pedaco = palavras.left(largura1 + 1);
        while (!pedaco.isEmpty() && pedaco.back() != u' ')
            pedaco.chop(1);
        if (pedaco.trimmed().isEmpty()) pedaco = palavras.left(largura1);
        linha1 = pedaco;
        while (linha1.endsWith(u' '))
            linha1.chop(1);
        resto = palavras.mid(pedaco.size()).trimmed();
    }
    QString linha2 = resto.isEmpty() ? QString() : resto + " ";
    if (linha2.size() < largura2) linha2 += QString(largura2 - linha2.size(), u'*');

    QList<CampoFace> campos = {
        {"Valor", L1, C1, "#" + Valor.trimmed() + "#"},
        {"Extenso 1", L2, C2, linha1},
        {"Extenso 2", L3, C3, linha2},
        {"Favorecido", L4, C4, da_impressora(Favorecido)},
        {"Cidade", L5, C5, da_impressora(Cidade)},
        {"Dia", L5, C5 + C6, QStringLiteral("%1").arg(dia.day(), 2, 10, QChar(u'0'))},
        {"Mês", L5, C5 + C7, MesExtenso(QString::number(dia.month()))},
        {"Ano", L5, C5 + C8, digitos_ano(dia.year(), modelo.DigitosAno)},
    };
    for (auto c = extras.begin(); c != extras.end(); ++c)
        campos.append({"Campo " + QString::number(c.key()), c->Linha, c->Coluna, c->Texto});
    for (CampoFace &c : campos)
        c.Texto.truncate(qMax(0, ColunasFace - c.Coluna + 1));
    return campos;
}

QStringList compoe_face(const ModeloFace &modelo, const QString &Valor, const QString &Favorecido,
                        const QString &Cidade, const QString &Data,
                        const QMap<int, CampoExtra> &extras) {
    const QList<CampoFace> campos = campos_face(modelo, Valor, Favorecido, Cidade, Data, extras);
    if (campos.isEmpty()) return {};
    QStringList grade;
    for (int i = 0; i < LinhasFace; ++i)
        grade << QString(ColunasFace, u' ');
    for (const CampoFace &c : campos)
        poe(grade, c.Linha, c.Coluna, c.Texto);
    for (QString &l : grade)
        while (l.endsWith(u' '))
            l.chop(1);
    return grade;
}

} // namespace vexa

#include "cheque/parcelas.h"

#include "core/conversoes.h"

namespace vexa {

namespace {
// "dd/mm/aa" without its slashes, as DataValida reads a date.
QString sem_barras(const QString &data) {
    return data.left(2) + data.mid(3, 2) + data.mid(6, 2);
}
} // namespace

qint64 divide_centavos(qint64 valor, int partes) {
    if (partes <= 0) return 0;
    const qint64 quociente = valor / partes, resto = valor % partes;
    if (2 * qAbs(resto) < partes) return quociente;
    return quociente + (valor < 0 ? -1 : 1);
}

QList<qint64> divide_total(qint64 total, int n) {
    if (n <= 0) return {};
    const qint64 parte = divide_centavos(total, n);
    QList<qint64> valores(n, parte);
    valores[0] = parte + (total - n * parte);
    return valores;
}

QString vencimento(const QDate &inicio, int dias) {
    return inicio.addDays(dias).toString("dd/MM/yy");
}

QString dia_fixo(const QString &Data, const QString &Dia) {
    const QString resto = Data.right(6); // "/mm/aa"
    const int mes = int(Val(Data.mid(3, 2)));
    QString data = Dia + resto;
    if (!DataValida(sem_barras(data))) {
        if (mes == 2) data = "29" + resto;
        if (data.left(2) == "31") data = "30" + resto;
    }
    return data;
}

} // namespace vexa

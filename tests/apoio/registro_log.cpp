#include "apoio/registro_log.h"

#include "store/tabelas.h"

#include <gtest/gtest.h>

namespace vexa::teste {

QList<QMap<QString, QString>> linhas_do_log(Sessao &s, Desktop &d) {
    QList<QMap<QString, QString>> linhas;
    EXPECT_NE(AbreTabelas(s, d, 0, 0, 0, 1), -2);
    RecordSet &log = Conjunto(s, TabLog);
    for (log.MoveFirst(); !log.Eof(); log.MoveNext()) {
        QMap<QString, QString> l;
        for (const QString &c : log.Campos())
            l[c] = log.Campo(c);
        linhas << l;
    }
    FechaTabelas(s, 0, 0, 0, 1);
    return linhas;
}

} // namespace vexa::teste

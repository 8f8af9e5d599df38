#include "core/relogio.h"

namespace vexa {

namespace {
QDate &data_fixa() {
    static QDate data;
    return data;
}
} // namespace

QDate hoje() {
    return data_fixa().isValid() ? data_fixa() : QDate::currentDate();
}

QDateTime agora() {
    if (!data_fixa().isValid()) return QDateTime::currentDateTime();
    return QDateTime(data_fixa(), QTime::currentTime());
}

void fixa_hoje(const QDate &data) {
    data_fixa() = data;
}

int ano_completo(int ano2) {
    if (ano2 >= 100) return ano2;
    const int atual = hoje().year();
    int ano = (atual / 100) * 100 + ano2;
    if (ano > atual + 20)
        ano -= 100;
    else if (ano <= atual - 80)
        ano += 100;
    return ano;
}

} // namespace vexa

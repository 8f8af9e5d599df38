#include "core/relogio.h"

#include <chrono>

namespace vexa {

namespace {
QDate &data_fixa() {
    static QDate data;
    return data;
}
} // namespace

QDate hoje() {
    if (data_fixa().isValid()) return data_fixa();
    // Asking the system for the date costs more than a walk over a large register can pay
    // for every row; the day read is kept for a second.
    using relogio = std::chrono::steady_clock;
    static QDate dia;
    static relogio::time_point lido;
    const auto agora_ = relogio::now();
    if (!dia.isValid() || agora_ - lido > std::chrono::seconds(1)) {
        dia = QDate::currentDate();
        lido = agora_;
    }
    return dia;
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

// Dates: the check of a typed date, its short forms, the month's name, the reading of any
// date text the program meets, and the date masks.
#include "core/conversoes.h"
#include "core/conversoes_interno.h"
#include "core/relogio.h"

#include <cmath>

namespace vexa {

QString formata_mascara_data(const QString &valor, const QString &mascara) {
    const std::optional<QDate> data = le_data(valor);
    if (!data) return valor;
    QString saida;
    for (qsizetype i = 0; i < mascara.size();) {
        const QChar c = mascara[i].toLower();
        qsizetype n = 1;
        while (i + n < mascara.size() && mascara[i + n].toLower() == c)
            ++n;
        if (c == u'd')
            saida += n == 1 ? QString::number(data->day()) : QString::asprintf("%02d", data->day());
        else if (c == u'm')
            saida +=
                n == 1 ? QString::number(data->month()) : QString::asprintf("%02d", data->month());
        else if (c == u'y')
            saida += n >= 4 ? QString::asprintf("%04d", data->year())
                            : QString::asprintf("%02d", data->year() % 100);
        else
            saida += QString(n, mascara[i]);
        i += n;
    }
    return saida;
}

bool DataValida(const QString &Data) {
    const double dia = Val(Data.mid(0, 2));
    const double mes = Val(Data.mid(2, 2));
    const double ano = Val(Data.mid(4, 4));
    if (dia < 1 || mes < 1 || mes > 12 || mes != std::floor(mes)) return false;
    int maximo = 31;
    switch (int(mes)) {
    case 4:
    case 6:
    case 9:
    case 11:
        maximo = 30;
        break;
    case 2:
        maximo = (ano == 0 || std::fmod(ano, 4.0) == 0) ? 29 : 28;
        break;
    default:
        break;
    }
    return dia <= maximo;
}

QString MesExtenso(const QString &Mes) {
    static const QStringList nomes = {"Janeiro",  "Fevereiro", "Março",    "Abril",
                                      "Maio",     "Junho",     "Julho",    "Agosto",
                                      "Setembro", "Outubro",   "Novembro", "Dezembro"};
    for (int i = 0; i < nomes.size(); ++i)
        if (Mes == QString::number(i + 1)) return nomes[i];
    return "ERRO";
}
QString data_curta(const QString &texto, const QString &MesAno) {
    if (texto.size() == 1 || texto.size() == 2) return formata_numero(Val(texto), "00") + MesAno;
    if (texto.size() >= 7) return texto.mid(0, 2) + texto.mid(3, 2) + texto.mid(6, 2);
    return texto;
}

std::optional<QDate> le_data(const QString &texto) {
    // Read by hand, not by pattern: the purge of the register reads every row's date.
    const QString t = texto.trimmed();
    QList<QStringView> grupos;
    QString separadores;
    qsizetype inicio = 0;
    for (qsizetype i = 0; i <= t.size(); ++i) {
        if (i < t.size() && eh_digito(t[i])) continue;
        if (i == inicio) return std::nullopt; // an empty group, or a stray character
        grupos.append(QStringView(t).mid(inicio, i - inicio));
        if (i < t.size()) {
            if (t[i] != u'/' && t[i] != u'.' && t[i] != u'-') return std::nullopt;
            separadores += t[i];
        }
        inicio = i + 1;
    }
    QStringView dia, mes, ano;
    bool anoCompleto = false;
    if (grupos.size() == 1 && (t.size() == 6 || t.size() == 8)) {
        dia = grupos[0].mid(0, 2);
        mes = grupos[0].mid(2, 2);
        ano = grupos[0].mid(4);
    } else if (grupos.size() == 3 && grupos[0].size() == 4 && separadores == u"--" &&
               grupos[1].size() <= 2 && grupos[2].size() <= 2) {
        ano = grupos[0];
        mes = grupos[1];
        dia = grupos[2];
        anoCompleto = true;
    } else if (grupos.size() == 3 && grupos[0].size() <= 2 && grupos[1].size() <= 2 &&
               (grupos[2].size() <= 2 || grupos[2].size() == 4)) {
        dia = grupos[0];
        mes = grupos[1];
        ano = grupos[2];
    } else {
        return std::nullopt;
    }
    const int numeroAno = ano.toInt();
    const QDate data(anoCompleto || ano.size() == 4 ? numeroAno : ano_completo(numeroAno),
                     mes.toInt(), dia.toInt());
    if (!data.isValid()) return std::nullopt;
    return data;
}

std::optional<qint64> dias_entre(const QString &de, const QString &ate) {
    const std::optional<QDate> a = le_data(de);
    const std::optional<QDate> b = le_data(ate);
    if (!a || !b) return std::nullopt;
    return a->daysTo(*b);
}

} // namespace vexa

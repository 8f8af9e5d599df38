#include "store/bancos_padrao.h"

#include "core/arquivo.h"
#include "core/conversoes.h"

namespace vexa {

QStringList posicoes_padrao() {
    return {"001", "005", "007", "010", "013", "092", "017",
            "009", "011", "050", "031", "040", "065"};
}

QStringList posicoes_padrao_transf() {
    return {"002", "005", "007", "012", "012", "015", "015",
            "091", "023", "008", "060", "093", "060", "093"};
}

QString linha_transf(const QStringList &Posicoes, const QString &Nome) {
    QStringList valores;
    for (const QString &v : Posicoes) {
        // Three characters each, so that the transfer cheque reads the line by position.
        const double n = Val(v);
        valores.append(n < 100 ? Format(QString::number(n, 'f', 0), "000") : v);
    }
    return valores.join(',') + "    ; " + Nome.left(30);
}

QStringList posicoes_copia_padrao() {
    // Lines: amount, words (two), payee, city and date, bank, number, comment.
    // Columns: amount, words (two), payee, city, day, month, year, bank, number, comment.
    return {"004", "006", "007", "009", "011", "002", "002", "014", "060", "001",
            "001", "001", "020", "041", "045", "056", "001", "060", "001"};
}

QList<QPair<QString, QString>> bancos_padrao() {
    // The banks an office in Brazil meets most; names as the operator knows them, at most
    // 30 characters (the width of the name field).
    return {
        {"001", "Banco do Brasil"},
        {"003", "Banco da Amazônia"},
        {"004", "Banco do Nordeste"},
        {"021", "Banestes"},
        {"033", "Santander"},
        {"037", "Banpará"},
        {"041", "Banrisul"},
        {"047", "Banese"},
        {"070", "BRB - Banco de Brasília"},
        {"077", "Banco Inter"},
        {"085", "Ailos"},
        {"104", "Caixa Econômica Federal"},
        {"136", "Unicred"},
        {"208", "BTG Pactual"},
        {"237", "Bradesco"},
        {"246", "Banco ABC Brasil"},
        {"260", "Nu Pagamentos"},
        {"318", "Banco BMG"},
        {"336", "Banco C6"},
        {"341", "Itaú Unibanco"},
        {"389", "Banco Mercantil do Brasil"},
        {"399", "HSBC"},
        {"422", "Banco Safra"},
        {"633", "Banco Rendimento"},
        {"652", "Itaú Unibanco Holding"},
        {"655", "Banco Votorantim"},
        {"745", "Citibank"},
        {"748", "Sicredi"},
        {"756", "Sicoob"},
    };
}

QList<LinhaPadrao> linhas_padrao() {
    const QStringList transf = posicoes_padrao_transf();
    QList<LinhaPadrao> linhas;
    for (const auto &[codigo, nome] : bancos_padrao()) {
        linhas.append({"Bancos", QStringList{codigo, nome} + posicoes_padrao()});
        // The table keeps each line beside its column: L1, C1, L2, C2...
        QStringList t{codigo, nome};
        for (int i = 0; i < 7; ++i)
            t << transf[i] << transf[7 + i];
        linhas.append({"Transferencia", t});
        linhas.append({"Script", QStringList{codigo, nome} + posicoes_copia_padrao()});
    }
    return linhas;
}

bool grava_configuracao_padrao(const Sessao &s) {
    // Written whole, once: a start cut short leaves the file as it was or complete.
    QString ini = "[Config]\r\nFirstTime=1\r\n\r\n[ChequeTransf]\r\n";
    QString lista;
    for (const auto &[codigo, nome] : bancos_padrao()) {
        ini += codigo + "=" + linha_transf(posicoes_padrao_transf(), nome) + "\r\n";
        lista += codigo + " - " + nome + "\r\n";
    }
    if (!grava_inteiro(s.CaminhoIni, para_ansi(ini))) return false;
    // A list that misses a line is made whole again when the transfer register opens.
    grava_inteiro(s.CaminhoApp + "/ChequeTransf.txt", para_ansi(lista));
    return true;
}

} // namespace vexa

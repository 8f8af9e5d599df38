#include "store/bancos_padrao.h"

namespace vexa {

QStringList posicoes_padrao() {
    return {"001", "005", "007", "010", "013", "092", "017",
            "009", "011", "050", "031", "040", "065"};
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

} // namespace vexa

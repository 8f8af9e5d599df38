#include "registers/regras.h"

#include "core/conversoes.h"

namespace vexa {

bool codigo_sem_regras(const QString &Codigo) {
    return Val(Codigo) >= CodigoSemRegras;
}

void mostra_aviso(Desktop &d, const AvisoRegras &aviso) {
    d.MsgBox(aviso.Texto, Botoes::OK, aviso.Titulo, aviso.Icone_);
}

int conta_falhas(std::initializer_list<bool> falhas) {
    int n = 0;
    for (bool f : falhas)
        n += f ? 1 : 0;
    return n;
}

const AvisoRegras AvisoPosicoes{"Algum erro relacionado a posição dos campos foi detectado.\r"
                                "Verifique se os mesmos estão corretos.",
                                "Vexa Printer Error"};

bool VerificaPosicoes(const QString &Codigo, const QStringList &Posicoes) {
    if (codigo_sem_regras(Codigo)) return true;
    const auto texto = [&](int i) { return Posicoes.value(i); };
    const auto n = [&](int i) { return Val(Posicoes.value(i)); };
    // The order of the lines and of the date parts compares the texts: three digits each
    // keep that the numeric order.
    const auto antes = [&](int a, int b) { return texto(a) < texto(b); };
    enum { L1, L2, L3, L4, L5, C1, C2, C3, C4, C5, C6, C7, C8 };
    return conta_falhas({
               !antes(L1, L2),           !antes(L2, L3),
               !antes(L3, L4),           !antes(L4, L5),
               !antes(C6, C7),           !antes(C7, C8),
               n(L1) < 1 || n(L1) > 5,   n(C1) > 118,
               n(L2) < 4 || n(L2) > 9,   n(C2) > 118,
               n(L3) < 6 || n(L3) > 12,  n(C3) > 118,
               n(L4) < 8 || n(L4) > 15,  n(C4) > 118,
               n(L5) < 10 || n(L5) > 17, n(C5) > 118,
               n(C6) + n(C5) > 114,      n(C7) + n(C5) > 116,
               n(C8) + n(C5) > 118,
           }) == 0;
}

const AvisoRegras AvisoAjuste{"Algum erro relacionado a posição dos campos foi detectado.\r"
                              "Verifique se os mesmos estão corretos, ou pressione a tecla "
                              "Cancelar.",
                              "Ajuste Gráfico Incorreto"};

bool VerificaOrdemAjuste(const QList<int> &T, const QList<int> &X) {
    if (T.size() < 8 || X.size() < 8) return false;
    return conta_falhas({T[0] >= T[1], T[1] >= T[2], T[2] >= T[3], T[3] >= T[4], X[4] >= X[5],
                         X[5] >= X[6], X[6] >= X[7]}) == 0;
}

const AvisoRegras AvisoTransf{
    "Há problemas com relação ao posicionamento dos campos.\r"
    "O valor mínimo entre os campos que estão na mesma linha é de 15 colunas.\r"
    "Por favor, verifique se esses valores estão sendo respeitados.",
    "Ajuste Gráfico Incorreto", Icone::Exclamacao};

bool VerificaOrdemTransf(const QList<int> &T, const QList<int> &X, const QList<int> &Linhas,
                         const QList<int> &Colunas) {
    if (T.size() < 7 || X.size() < 7 || Linhas.size() < 7 || Colunas.size() < 7) return false;
    enum { Valor, Extenso1, Extenso2, Cidade, Data, Agencia, Conta };
    // The branch is compared with the date only when they share a line; the city and the
    // account always stand on the lines of the date and the branch.
    return conta_falhas(
               {T[Valor] >= T[Extenso1], T[Extenso1] >= T[Extenso2], T[Extenso2] >= T[Cidade],
                X[Cidade] == X[Data], X[Data] == X[Agencia], X[Agencia] == X[Conta],
                Linhas[Data] == Linhas[Agencia] && Colunas[Data] + 12 >= Colunas[Agencia],
                Colunas[Agencia] + 18 >= Colunas[Conta], Colunas[Cidade] + 14 >= Colunas[Data]}) ==
           0;
}

} // namespace vexa

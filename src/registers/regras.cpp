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

bool verifica_ordem_ajuste(const QList<int> &T, const QList<int> &X) {
    if (T.size() < 8 || X.size() < 8) return false;
    return conta_falhas({T[0] >= T[1], T[1] >= T[2], T[2] >= T[3], T[3] >= T[4], X[4] >= X[5],
                         X[5] >= X[6], X[6] >= X[7]}) == 0;
}

const AvisoRegras AvisoTransf{
    "Há problemas com relação ao posicionamento dos campos.\r"
    "O valor mínimo entre os campos que estão na mesma linha é de 15 colunas.\r"
    "Por favor, verifique se esses valores estão sendo respeitados.",
    "Ajuste Gráfico Incorreto", Icone::Exclamacao};

bool verifica_ordem_transf(const QList<int> &T, const QList<int> &X, const QList<int> &Linhas,
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

// --- the copy layout

namespace {

struct CampoLargura {
    const char *Nome;
    int Largura;
};
// By CampoCopia.
constexpr CampoLargura campos_copia[] = {{"Valor", 18}, {"Favorecido", 47},  {"Cidade", 20},
                                         {"Dia", 2},    {"Mês", 9},          {"Ano", 4},
                                         {"Banco", 36}, {"Nº do Cheque", 14}};

// The words of one failure: the field further left, the blamed one, and the numbers and
// phrase the message quotes. The numbers of the date rows are the message's own; the test
// itself always uses the widths above.
struct FraseCopia {
    CampoCopia Esquerda, Culpado;
    int Tamanho;
    const char *Frase;
    int Limite;
};
using C = CampoCopia;
const FraseCopia frases_copia[] = {
    {C::Valor, C::Banco, 19, "posições do valor ou não está respeitando o limite ", 36},
    {C::Banco, C::Valor, 37, "posições do banco ou não está respeitando o limite ", 18},
    {C::Valor, C::Favorecido, 19, "posições do valor ou não está respeitando o limite ", 47},
    {C::Favorecido, C::Valor, 48, "posições do favorecido ou não está respeitando o limite ", 18},
    {C::Valor, C::Cidade, 19, "posições do valor ou não está respeitando o limite ", 20},
    {C::Cidade, C::Valor, 21, "posições da cidade ou não está respeitando o limite ", 18},
    {C::Valor, C::NumeroCheque, 19, "posições do valor ou não está respeitando o limite ", 14},
    {C::NumeroCheque, C::Valor, 15, "posições do Nº do cheque ou não está respeitando o limite ",
     18},
    {C::Banco, C::Favorecido, 37, "posições do banco ou não está respeitando o limite ", 47},
    {C::Favorecido, C::Banco, 48, "posições do favorecido ou não está respeitando o limite ", 36},
    {C::Banco, C::Cidade, 37, "posições do banco ou não está respeitando o limite ", 20},
    {C::Cidade, C::Banco, 21, "posições da cidade ou não está respeitando o limite ", 36},
    {C::Banco, C::NumeroCheque, 37, "posições do banco ou não está respeitando o limite ", 14},
    {C::NumeroCheque, C::Banco, 15, "posições do nº do cheque ou não está respeitando o limite ",
     36},
    {C::Favorecido, C::Cidade, 48, "posições do favorecido ou não está respeitando o limite ", 20},
    {C::Cidade, C::Favorecido, 21, "posições da cidade ou não está respeitando o limite ", 47},
    {C::Favorecido, C::NumeroCheque, 48, "posições do favorecido ou não está respeitando o limite ",
     14},
    {C::NumeroCheque, C::Favorecido, 15,
     "posições do Nº do Cheque ou não está respeitando o limite ", 47},
    {C::Cidade, C::NumeroCheque, 21, "posições da cidade ou não está respeitando o limite ", 14},
    {C::NumeroCheque, C::Cidade, 15, "posições do nº do cheque ou não está respeitando o limite ",
     20},
    {C::Dia, C::Cidade, 3, "posições do dia ou não está respeitando o limite ", 20},
    {C::Cidade, C::Dia, 21, "posições da cidade ou não está respeitando o limite ", 2},
    {C::Dia, C::Mes, 3, "posições do dia ou não está respeitando o limite ", 9},
    {C::Mes, C::Dia, 3, "posições do mês ou não está respeitando o limite ", 2},
    {C::Mes, C::Ano, 10, "posições do mês ou não está respeitando o limite ", 9},
    {C::Ano, C::Mes, 3, "posições do ano ou não está respeitando o limite ", 9},
};

QString texto_falha_copia(CampoCopia esquerda, CampoCopia culpado) {
    for (const FraseCopia &f : frases_copia) {
        if (f.Esquerda != esquerda || f.Culpado != culpado) continue;
        const QString nome = nome_campo_copia(culpado);
        return "Há problemas no posicionamento do campo " + nome + ". " + "O campo " + nome +
               " não está respeitando o tamanho de " + QString::number(f.Tamanho) + " " +
               QString::fromUtf8(f.Frase) + "de " + QString::number(f.Limite) +
               " posições em relação a última coluna do cheque ( coluna 80). " +
               "Por favor verifique.";
    }
    return {};
}

} // namespace

QString nome_campo_copia(CampoCopia campo) {
    return QString::fromUtf8(campos_copia[int(campo)].Nome);
}

int largura_campo_copia(CampoCopia campo) {
    return campos_copia[int(campo)].Largura;
}

std::optional<FalhaCopia> VerificaPosicaoCopia(const QList<PosicaoCopia> &Posicoes) {
    const auto pos = [&](C c) { return Posicoes.value(int(c)); };
    // The pairs in the order they are checked; the date rows hold on any line.
    struct Par {
        C Primeiro, Segundo;
        bool MesmaLinha;
    };
    static const Par pares[] = {
        {C::Valor, C::Banco, true},
        {C::Valor, C::Favorecido, true},
        {C::Valor, C::Cidade, true},
        {C::Valor, C::NumeroCheque, true},
        {C::Banco, C::Favorecido, true},
        {C::Banco, C::Cidade, true},
        {C::Banco, C::NumeroCheque, true},
        {C::Favorecido, C::Cidade, true},
        {C::Favorecido, C::NumeroCheque, true},
        {C::Cidade, C::NumeroCheque, true},
        {C::Cidade, C::Dia, false},
        {C::Dia, C::Mes, false},
        {C::Mes, C::Ano, false},
    };
    for (const Par &par : pares) {
        const PosicaoCopia a = pos(par.Primeiro), b = pos(par.Segundo);
        if (par.MesmaLinha && a.Linha != b.Linha) continue;
        // The field further left is P; on the same column the first of the pair.
        const bool primeiro_esquerda = a.Coluna <= b.Coluna;
        const C p = primeiro_esquerda ? par.Primeiro : par.Segundo;
        const C q = primeiro_esquerda ? par.Segundo : par.Primeiro;
        const int cp = pos(p).Coluna, cq = pos(q).Coluna;
        if (cp + largura_campo_copia(p) < cq && cq + largura_campo_copia(q) <= 80) continue;
        return FalhaCopia{q, texto_falha_copia(p, q)};
    }
    return std::nullopt;
}

} // namespace vexa

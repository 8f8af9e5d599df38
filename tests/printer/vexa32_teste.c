/* A stand-in for the printer library, with the same fourteen functions and C types, built
 * into a shared library named vexa32 so that the native binding is tested across a real
 * library boundary. Each call is written down with its raw arguments: a text as its bytes in
 * hexadecimal between brackets, an integer in decimal. Lines are separated by LF:
 *     IniciaPorta [434F4D32]
 *     ImprimeCampoX 1 20 109 [53E36F]
 * The test reads them with TesteChamadas and sets the answers with TesteDefineResultado. */
#include <stdarg.h>
#include <stdio.h>
#include <string.h>

#define MAX_REGISTRO 65536

static char registro[MAX_REGISTRO];
static size_t usado;

static const char *const operacoes[] = {
    "IniciaPorta",      "FechaPorta",  "TravaDoc",   "ImprimeCheque", "ImprimeCampoX",
    "FormataTX",        "TolvaneTX",   "ComandoTX",  "IncluiBanco",   "IncluiFavorecido",
    "ExcluiFavorecido", "AlteraMoeda", "CancelaRel", "MontaValor"};
#define N_OPERACOES (sizeof(operacoes) / sizeof(operacoes[0]))
static short resultados[N_OPERACOES];
static int resultado_definido[N_OPERACOES];
static char texto_monta_valor[1024];
static int monta_valor_escreve;

static void anota(const char *s) {
    size_t n = strlen(s);
    if (usado + n >= MAX_REGISTRO) n = MAX_REGISTRO - 1 - usado;
    memcpy(registro + usado, s, n);
    usado += n;
    registro[usado] = '\0';
}

static short resultado(const char *nome) {
    for (size_t i = 0; i < N_OPERACOES; ++i)
        if (strcmp(operacoes[i], nome) == 0) return resultado_definido[i] ? resultados[i] : 1;
    return 1;
}

/* ---- what the test uses */

const char *TesteChamadas(void) {
    return registro;
}

void TesteLimpa(void) {
    usado = 0;
    registro[0] = '\0';
    memset(resultado_definido, 0, sizeof resultado_definido);
    monta_valor_escreve = 0;
}

void TesteDefineResultado(const char *op, short r) {
    for (size_t i = 0; i < N_OPERACOES; ++i)
        if (strcmp(operacoes[i], op) == 0) {
            resultados[i] = r;
            resultado_definido[i] = 1;
        }
}

/* What MontaValor writes over its first argument, in place: at most the length of the
 * buffer, ended by a zero byte when shorter. */
void TesteDefineMontaValor(const char *t) {
    strncpy(texto_monta_valor, t, sizeof texto_monta_valor - 1);
    texto_monta_valor[sizeof texto_monta_valor - 1] = '\0';
    monta_valor_escreve = 1;
}

/* Writes one call down, its arguments as the format says ("t" a text, "i" an integer), and
 * gives the answer the test set for it. */
static short chamada(const char *nome, const char *formato, ...) {
    char n[16], hex[3];
    va_list args;
    if (usado > 0) anota("\n");
    anota(nome);
    va_start(args, formato);
    for (const char *f = formato; *f; ++f) {
        if (*f == 'i') {
            snprintf(n, sizeof n, " %d", (int)(short)va_arg(args, int));
            anota(n);
        } else {
            anota(" [");
            for (const unsigned char *p = (const unsigned char *)va_arg(args, char *); *p; ++p) {
                snprintf(hex, sizeof hex, "%02X", *p);
                anota(hex);
            }
            anota("]");
        }
    }
    va_end(args);
    return resultado(nome);
}

/* ---- the library's fourteen functions */

short IniciaPorta(char *Porta) {
    return chamada("IniciaPorta", "t", Porta);
}

short FechaPorta(void) {
    return chamada("FechaPorta", "");
}

short TravaDoc(short Trava) {
    return chamada("TravaDoc", "i", Trava);
}

short ImprimeCheque(char *Banco, char *Valor, char *Favorecido, char *Cidade, char *Data,
                    char *Extra) {
    return chamada("ImprimeCheque", "tttttt", Banco, Valor, Favorecido, Cidade, Data, Extra);
}

short ImprimeCampoX(short Campo, short Linha, short Coluna, char *Texto) {
    return chamada("ImprimeCampoX", "iiit", Campo, Linha, Coluna, Texto);
}

short FormataTX(char *Texto, short Modo, short A, short B, short C, short D) {
    return chamada("FormataTX", "tiiiii", Texto, Modo, A, B, C, D);
}

short TolvaneTX(char *Texto) {
    return chamada("TolvaneTX", "t", Texto);
}

short ComandoTX(char *Comando, short Tamanho) {
    return chamada("ComandoTX", "ti", Comando, Tamanho);
}

short IncluiBanco(char *Codigo, char *Posicoes) {
    return chamada("IncluiBanco", "tt", Codigo, Posicoes);
}

short IncluiFavorecido(char *Codigo, char *Nome) {
    return chamada("IncluiFavorecido", "tt", Codigo, Nome);
}

short ExcluiFavorecido(char *Codigo) {
    return chamada("ExcluiFavorecido", "t", Codigo);
}

short AlteraMoeda(char *Singular, char *Plural) {
    return chamada("AlteraMoeda", "tt", Singular, Plural);
}

short CancelaRel(char *Opcao) {
    return chamada("CancelaRel", "t", Opcao);
}

short MontaValor(char *Valor, char *Singular, char *Plural) {
    const short r = chamada("MontaValor", "ttt", Valor, Singular, Plural);
    if (monta_valor_escreve) {
        const size_t espaco = strlen(Valor);
        const size_t n = strlen(texto_monta_valor);
        if (n < espaco) {
            memcpy(Valor, texto_monta_valor, n + 1);
        } else {
            memcpy(Valor, texto_monta_valor, espaco);
        }
    }
    return r;
}

#include "cheque/pedidos.h"

#include "cheque/main.h"

#include <utility>

namespace vexa {

QStringList LeLinhaComando(const QString &Linha) {
    QStringList parametros(7);
    enum { Antes, Letra, Valor } estado = Antes;
    QString letra, valor;
    for (const QChar c : Linha) {
        if (c == u'/') {
            if (!valor.isEmpty()) GuardaParametro(parametros, letra, valor);
            valor.clear();
            estado = Letra;
        } else if (estado == Letra) {
            letra = c;
            estado = Valor;
        } else if (estado == Valor) {
            valor += c;
        }
    }
    if (!valor.isEmpty()) GuardaParametro(parametros, letra, valor);
    return parametros;
}

void GuardaParametro(QStringList &Parametros, const QString &Letra, const QString &Valor) {
    static const QMap<QString, int> campos = {{"B", 0}, {"V", 1}, {"F", 2},
                                              {"L", 3}, {"D", 4}, {"C", 6}};
    const auto campo = campos.find(Letra.toUpper());
    if (campo == campos.end()) return;
    while (Parametros.size() < 7)
        Parametros.append(QString());
    Parametros[*campo] = Valor.trimmed();
}

void AplicaParametros(Main &Tela) {
    QList<int> chegados;
    for (int i = 0; i < Tela.ParametrosCheque.size(); ++i) {
        if (Tela.ParametrosCheque[i].isEmpty() || !Tela.Text1.contains(i)) continue;
        Tela.Muda(Tela.Text1[i], Tela.ParametrosCheque[i]);
        Tela.ParametrosCheque[i].clear();
        chegados.append(i);
    }
    // A requested cheque prints and registers as the same cheque typed: each field is taken as
    // if typed and left, and the first one refused keeps the focus.
    bool recusado = false;
    for (int i : chegados)
        if (!Tela.NormalizaCampo(i) && !std::exchange(recusado, true)) Tela.SetFocus("Text1", i);
    if (!recusado && chegados.contains(6)) Tela.AvisaDuplicado();
}

} // namespace vexa

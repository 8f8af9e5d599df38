// The post-dated screen's printing run: one cheque for each instalment, each registered as
// it prints.
#include "cheque/cheprz.h"

#include "catalogo/telas.h"
#include "cheque/frente.h"
#include "cheque/main.h"
#include "core/entrada.h"
#include "printer/impressao.h"

namespace vexa {

// --- printing

int ChePrz::VerificaCampos() {
    const auto recusa = [this](const QString &texto) {
        desktop.MsgBox(texto, Botoes::OK, "Erro", Icone::Exclamacao);
        return 1;
    };
    if (ContaParcelas() == 0) return recusa("Valores inválidos...");
    if (Text3[0].Text.isEmpty()) return recusa("Código do banco inválido...");
    if (Text1[13].Text.isEmpty() || Text2[0].Text.isEmpty()) return recusa("Valores inválidos...");
    // The printer takes no empty city or payee: the blank stands on the screen and in Log.
    for (int i : {1, 2})
        if (Text3[i].Text.isEmpty()) Muda(Text3[i], " ");
    return 0;
}

ChequeImpresso ChePrz::parcela(int i) const {
    ChequeImpresso cheque{Text3[0].Text, Text2[i].Text,      Text3[2].Text,
                          Text3[1].Text, Text1[i + 13].Text, Text4[i].Text};
    cheque.Parcela = true;
    return cheque;
}

void ChePrz::ImprimeParcelas() {
    const int n = ContaParcelas();
    auto *principal = dynamic_cast<Main *>(desktop.Aberta(telas::Main));
    // The whole run is checked before its first leaf: a number already in the register stops it.
    for (int i = 0; i < n; ++i)
        if (!confere_duplicado(sessao, desktop, Text3[0].Text, Text4[i].Text, QString(),
                               QStringLiteral("Parcela %1 de %2: ").arg(i + 1).arg(n)))
            return SetFocus("Text4", i);
    for (int i = 0; i < n; ++i) {
        const QString valor = Text2[i].Text.trimmed(), numero = Text4[i].Text;
        if (!pede_documento(desktop, "Impressão do Cheque", Icone::Informacao,
                            descreve_parcela(i + 1, n, numero, valor)))
            return;
        // The amount goes again as the sixth text, which only an instalment fills.
        const TextosCheque textos{Text3[0].Text.trimmed(), valor, Text3[2].Text, Text3[1].Text,
                                  Text1[i + 13].Text,      valor};
        // The entry screen's report box decides, as for a single cheque.
        const bool registra = principal && principal->CheckBox.Value != 0;
        const Desfecho desfecho =
            imprime_e_registra(sessao, desktop, sessao.Gauge1, textos, parcela(i), registra, true);
        if (principal)
            principal->Situacao.Caption = QStringLiteral("Parcela %1 de %2: ").arg(i + 1).arg(n) +
                                          situacao_cheque(numero, valor, desfecho);
        // A port that didn't open, or a register that can't take the cheque, ends the run; a
        // cheque the printer refused, whatever its code, doesn't.
        if (!desfecho.Resultado) return;
    }
}

int ChePrz::RegistraParcela(int Parcela) {
    return registra_cheque(sessao, parcela(Parcela)) == EstadoRegistro::Gravado ? 0 : -2;
}

} // namespace vexa

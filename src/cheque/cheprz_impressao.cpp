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

void ChePrz::ImprimeParcelas() {
    const int n = ContaParcelas();
    // The entry screen's report box decides, as for a single cheque.
    const auto registra = [this] {
        const auto *principal = dynamic_cast<const Main *>(desktop.Aberta(telas::Main));
        return principal && principal->CheckBox.Value != 0;
    };
    for (int i = 0; i < n; ++i) {
        if (!pede_documento(desktop, "Impressão do Cheque")) return;
        const QString valor = Text2[i].Text.trimmed();
        // The amount goes again as the sixth text, which only an instalment fills.
        const TextosCheque textos{Text3[0].Text.trimmed(), valor, Text3[2].Text, Text3[1].Text,
                                  Text1[i + 13].Text,      valor};
        // A port that didn't open ends the run; a refused cheque, whatever its code, doesn't.
        const std::optional<qint16> resultado =
            imprime_um_cheque(sessao, desktop, sessao.Gauge1, textos, true);
        if (!resultado) return;
        if (*resultado == 1 && registra()) RegistraParcela(i);
    }
}

int ChePrz::RegistraParcela(int Parcela) {
    ChequeImpresso cheque{Text3[0].Text, Text2[Parcela].Text,      Text3[2].Text,
                          Text3[1].Text, Text1[Parcela + 13].Text, Text4[Parcela].Text};
    cheque.Parcela = true;
    return registra_cheque(sessao, desktop, cheque) == -2 ? -2 : 0;
}
} // namespace vexa

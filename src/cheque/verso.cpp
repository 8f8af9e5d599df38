#include "cheque/verso.h"

#include "cheque/main.h"
#include "core/entrada.h"
#include "printer/impressao.h"

namespace vexa {

namespace {
constexpr qint32 Vermelho = 255, Preto = 0;
const QString Margem(15, u' ');
} // namespace

void ImprimeVerso(Main &Tela) {
    // Whose back it is: the cheque's number and payee, as far as the front holds them.
    QStringList dono;
    if (!Tela.Text1[6].Text.trimmed().isEmpty()) dono << "cheque " + Tela.Text1[6].Text.trimmed();
    if (!Tela.Text1[2].Text.trimmed().isEmpty()) dono << Tela.Text1[2].Text.trimmed();
    const QString documento = dono.isEmpty() ? QString() : "Verso do " + dono.join(" — ");
    if (!pede_documento(Tela.desktop, "Impressão do Verso", Icone::Informacao, documento)) return;
    QString texto;
    qint16 modo = 3;
    for (int i = 0; i <= 9; ++i) {
        Rotulo &rotulo = Tela.Label1[i + 7];
        rotulo.ForeColor = Vermelho;
        bool resto_vazio = true;
        for (int j = i; j <= 9 && resto_vazio; ++j)
            resto_vazio = Tela.Text2[j].Text.isEmpty();
        if (resto_vazio) {
            rotulo.ForeColor = Preto;
            break;
        }
        const QString &linha = Tela.Text2[i].Text;
        if (linha.isEmpty()) {
            texto += "\n";
        } else {
            texto += Margem + linha + "\n";
            // A line wider than the narrow mode sends the whole back in the wide one.
            if (Margem.size() + linha.size() > 80) modo = 2;
        }
        rotulo.ForeColor = Preto;
    }
    if (!texto.isEmpty()) EnviaTextoImpressora(Tela.sessao, Tela.desktop, texto, modo);
}

} // namespace vexa

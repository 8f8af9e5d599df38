#include "core/entrada.h"

#include "core/conversoes.h"
#include "core/relogio.h"
#include "core/teclas.h"

#include <algorithm>

namespace vexa {

const QString MensagemValorMaximo = "O valor não pode ser maior que 9.999.999.999,99.";

std::optional<QString> data_digitada(const QString &texto, const QString &MesAno) {
    QString data = texto;
    if (data.isEmpty()) {
        data = hoje().toString("ddMMyy");
    } else if (data.size() <= 2) {
        data = data_curta(data, MesAno);
    } else if (data.count(u'/') == 2) {
        const QStringList partes = data.split(u'/');
        data =
            Format(partes[0], "00") + Format(partes[1], "00") + Format(partes[2], "0000").right(2);
    } else if (data.size() >= 8 && !data.contains(u'/')) {
        data = data.left(4) + data.mid(6, 2);
    }
    // DataValida alone would take "0102" with a year of 0, shown as "  /01/02".
    const bool seis_digitos =
        data.size() == 6 &&
        std::all_of(data.begin(), data.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    if (!seis_digitos || !DataValida(data)) return std::nullopt;
    return Format(data, "@@/@@/@@");
}

bool enter_avanca(Tela &tela, const RefControle &campo, int &KeyCode,
                  const std::vector<RefControle> &ordem) {
    if (KeyCode != tecla::Enter) return false;
    const auto atual = std::find(ordem.begin(), ordem.end(), campo);
    if (atual == ordem.end()) return false;
    KeyCode = 0;
    if (std::next(atual) != ordem.end()) tela.SetFocus(*std::next(atual));
    return true;
}

bool corta_tamanho(Tela &tela, Controle &campo, int ate, int corta) {
    if (campo.Text.size() < ate) return false;
    tela.desktop.MsgBox("Tamanho Máximo deste campo...", Botoes::OK, "Erro");
    tela.Muda(campo, campo.Text.left(corta));
    return true;
}

bool pede_documento(Desktop &d, const QString &titulo, Icone icone, const QString &documento) {
    const QString texto = "Insira o Documento." + (documento.isEmpty() ? "" : "\n\n" + documento);
    return d.MsgBox(texto, Botoes::OKCancel, titulo, icone) == Resposta::OK;
}

} // namespace vexa

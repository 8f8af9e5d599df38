// The post-dated screen's fields: what typing, leaving and the keys do in each of them.
#include "cheque/cheprz.h"

#include "catalogo/telas.h"
#include "cheque/cheprz_regras.h"
#include "cheque/parcelas.h"
#include "core/conversoes.h"
#include "core/entrada.h"
#include "core/grava_ini.h"
#include "core/ini.h"
#include "core/relogio.h"
#include "core/teclas.h"
#include "store/tabelas.h"
#include "store/talao.h"

#include <optional>
#include <utility>

namespace vexa {

using namespace prazo;

namespace {

const std::vector<RefControle> ordem_text3 = {
    {"Text3", 0}, {"Text3", 1}, {"Text3", 2}, {"Command3D1", 0}};

} // namespace

// --- the fields' events

void ChePrz::aviso(const QString &texto, Icone icone) {
    desktop.MsgBox(texto, Botoes::OK, Caption, icone);
}

void ChePrz::Text1_Change(int Index) {
    const int maximo = maximo_text1(Index);
    corta_tamanho(*this, Text1[Index], maximo + 1, maximo);
}

void ChePrz::Text2_Change(int Index) {
    corta_tamanho(*this, Text2[Index], 11, 10);
}

void ChePrz::Text4_Change(int Index) {
    corta_tamanho(*this, Text4[Index], 13, 12);
}

void ChePrz::Text3_Change(int Index) {
    Texto &campo = Text3[Index];
    // The name beside the bank belongs to the code that was looked up.
    if (Index == 0) Label2.Caption.clear();
    corta_tamanho(*this, campo, campo.MaxLength + 1, campo.MaxLength);
}

void ChePrz::Text1_Enter(int Index) {
    rumoPeriodo_ = eh_periodo(Index);
}

void ChePrz::Text1_GotFocus(int Index) {
    rumoPeriodo_ = false;
    Text1[Index].SelecionaTudo = true;
    if (Index >= 13 && !Text1[1].Text.isEmpty()) CalculaParcelas();
}

bool ChePrz::mostra_valor(Texto &campo, const QString &mascara) {
    const std::optional<qint64> valor = centavos(campo.Text);
    if (valor && *valor >= 0) {
        const QString texto = formata_centavos(*valor, mascara);
        if (texto.size() <= campo.MaxLength) {
            Muda(campo, texto);
            return true;
        }
        // Cut to the field's size it would read as another amount.
        desktop.MsgBox("Tamanho Máximo deste campo...", Botoes::OK, "Erro");
    }
    Muda(campo, QString());
    return false;
}

void ChePrz::Text1_LostFocus(int Index) {
    const bool rumoPeriodo = std::exchange(rumoPeriodo_, false);
    if (std::exchange(semConferir_, false)) return;
    Texto &campo = Text1[Index];
    if (Index == 0) {
        if (!campo.Text.isEmpty() && !mostra_valor(campo, Mascara)) SetFocus(campo);
        return;
    }
    if (eh_periodo(Index)) {
        // Walking the days, an empty one ends them: the dates come next.
        if (campo.Text.isEmpty()) {
            if (rumoPeriodo) SetFocus("Text1", 13);
            return;
        }
        const std::optional<int> dias = inteiro_digitado(campo.Text);
        if (!dias) {
            Muda(campo, QString());
            SetFocus(campo);
            return;
        }
        Muda(campo, Format(QString::number(*dias), "#00"));
        return;
    }
    // A date the rules can't read stays as typed: the fixed day may leave a 29th of February
    // that only the printer refuses.
    if (campo.Text.isEmpty()) return;
    if (const auto data = data_digitada(campo.Text, sessao.MesAno)) Muda(campo, *data);
}

void ChePrz::Text2_LostFocus(int Index) {
    if (std::exchange(semConferir_, false)) return;
    Texto &campo = Text2[Index];
    if (campo.Text.isEmpty()) return;
    if (!mostra_valor(campo, Mascara)) return SetFocus(campo);
    const int n = ContaParcelas();
    if (Index >= n - 1) return;
    // The later instalments share what is left of the total equally, with no correction of
    // the rounding.
    if (Text1[0].Text.isEmpty()) Muda(Text1[0], "0,00");
    qint64 resto = centavos(Text1[0].Text).value_or(0);
    for (int j = 0; j <= Index; ++j)
        resto -= centavos(Text2[j].Text).value_or(0);
    const QString parte = formata_centavos(divide_centavos(resto, n - 1 - Index), Mascara);
    for (int j = Index + 1; j < n; ++j)
        Muda(Text2[j], parte);
}

void ChePrz::Text3_GotFocus(int Index) {
    if (!sessao.ResultadoPesquisa.isEmpty()) {
        Muda(Text3[Index], sessao.ResultadoPesquisa);
        sessao.ResultadoPesquisa.clear();
    }
    Text3[Index].SelecionaTudo = true;
}

void ChePrz::Text3_LostFocus(int Index) {
    if (std::exchange(semConferir_, false)) return;
    Texto &campo = Text3[Index];
    if (Index != 0 || campo.Text.isEmpty()) return;
    Muda(campo, Format(campo.Text, "000"));
    // A register that can't be opened lets the code pass, without a name.
    if (AbreTabelas(sessao, desktop, 1, 0, 0, 0) == -2) return;
    const std::optional<QString> nome = le_nome_banco(sessao, campo.Text);
    FechaTabelas(sessao, 1, 0, 0, 0);
    // Held by another program since it was opened: the code stays, unchecked.
    if (!nome) return avisa_registro_ilegivel(desktop, sessao);
    if (*nome != "Inexistente") {
        Label2.Caption = *nome;
        return numera_parcelas();
    }
    desktop.MsgBox("Banco Inexistente...", Botoes::OK, "Erro");
    Muda(campo, QString());
    Label2.Caption.clear();
    SetFocus(campo);
}

void ChePrz::numera_parcelas() {
    std::optional<QString> numero = proximo_cheque(sessao, Text3[0].Text);
    if (numero->isEmpty()) return;
    for (int i = 0; i < ContaParcelas() && numero; ++i) {
        if (Text4[i].Text.isEmpty()) Muda(Text4[i], *numero);
        numero = proximo_numero(Text4[i].Text);
    }
}

// --- keys

bool ChePrz::limpa_campo(Texto &campo, int KeyCode) {
    if (KeyCode != tecla::F8) return false;
    Muda(campo, QString());
    return true;
}

void ChePrz::grava_periodos() {
    // An empty value would read the key instead of storing it. One word for the twelve.
    bool gravou = true;
    for (int i = 1; i <= 12; ++i)
        gravou = LeGravaIni(sessao.CaminhoIni, Secao, QStringLiteral("prazo%1").arg(i),
                            Text1[i].Text.isEmpty() ? " " : Text1[i].Text) == "1" &&
                 gravou;
    if (!gravou) AvisaIniNaoGravado(desktop);
}

int ChePrz::limite_parcelas() const {
    return int(Val(parcelas.Text));
}

bool ChePrz::passou_limite(int posicao, const QString &fim) {
    if (parcelas.Text.isEmpty() || posicao <= limite_parcelas()) return false;
    aviso("Ultrapassou o limite de " + QString::number(limite_parcelas()) + fim);
    return true;
}

void ChePrz::Text1_KeyDown(int Index, int &KeyCode, int) {
    if (limpa_campo(Text1[Index], KeyCode)) return;
    if (KeyCode == tecla::F4) {
        if (eh_periodo(Index)) grava_periodos();
        return;
    }
    if (KeyCode == tecla::F3) {
        if (Index >= 1 && Index <= 4)
            aviso("Prazos para pagamento ex: Cheque p/ 30 dias / 60 dias / 90 dias / 120 dias "
                  "(até 4x)",
                  Icone::Informacao);
        else
            aviso("Pesquisa somente para Banco, Cidade e Favorecido!");
        return;
    }
    if (KeyCode != tecla::Enter) return;
    KeyCode = 0;
    if (Index == 0)
        enter_total();
    else if (eh_periodo(Index))
        enter_periodo(Index);
    else
        enter_vencimento(Index);
}

void ChePrz::enter_total() {
    Texto &campo = Text1[0];
    const std::optional<qint64> valor = centavos(campo.Text);
    if (!valor || *valor < 0) {
        aviso("Valor inválido.");
        Muda(campo, QString());
        return;
    }
    if (mostra_valor(campo, "#,###0.00")) SetFocus(DataPre);
}

void ChePrz::enter_periodo(int Index) {
    if (!Text1[Index].Text.isEmpty() && Index < 12) return SetFocus("Text1", Index + 1);
    for (int j = Index; j < 12; ++j)
        Muda(Text2[j], QString());
    SetFocus("Text1", 13);
}

void ChePrz::enter_vencimento(int Index) {
    if (passou_limite(Index - 12, " parcela(s)")) {
        Muda(Text1[Index], QString());
        return SetFocus("Text3", 0);
    }
    SetFocus(Index == 24 ? RefControle{"Text3", 0} : RefControle{"Text1", Index + 1});
}

void ChePrz::Text2_KeyDown(int Index, int &KeyCode, int) {
    if (limpa_campo(Text2[Index], KeyCode)) return;
    if (KeyCode == tecla::F3) return aviso("Pesquisa somente para Banco, Cidade e Favorecido!");
    if (KeyCode != tecla::Enter) return;
    KeyCode = 0;
    if (passou_limite(Index + 1, " parcela")) {
        Muda(Text2[Index], QString());
        return SetFocus("Text3", 0);
    }
    SetFocus(Index == 3 || Index == 11 ? RefControle{"Text3", 0} : RefControle{"Text2", Index + 1});
}

void ChePrz::Text4_KeyDown(int Index, int &KeyCode, int) {
    if (KeyCode != tecla::Enter) return;
    KeyCode = 0;
    if (passou_limite(Index + 1, " parcela")) {
        Muda(Text4[Index], QString());
        return SetFocus("Text3", 0);
    }
    if (Text4[Index].Text.isEmpty()) return aviso("Digite o número do cheque");
    // Typed by hand, the days may stand without a number of instalments.
    const int ate = qMin(12, parcelas.Text.isEmpty() ? ContaParcelas() : limite_parcelas());
    for (int j = Index + 1; j < ate; ++j) {
        const std::optional<QString> numero = proximo_numero(Text4[j - 1].Text);
        if (!numero) break;
        Muda(Text4[j], *numero);
    }
    SetFocus("Text3", 0);
}

void ChePrz::Text3_KeyDown(int Index, int &KeyCode, int) {
    if (limpa_campo(Text3[Index], KeyCode)) return;
    if (KeyCode == tecla::F4) {
        const QString texto = Text3[Index].Text.isEmpty() ? " " : Text3[Index].Text;
        if (Index == 0) {
            if (GravaIni(sessao, desktop, Secao, "Codigo", texto))
                GravaIni(sessao, desktop, Secao, "banco",
                         Label2.Caption.isEmpty() ? " " : Label2.Caption);
        } else {
            GravaIni(sessao, desktop, Secao, Index == 1 ? "Cidade" : "Favorecido", texto);
        }
        return;
    }
    if (KeyCode == tecla::F3) {
        static const qint16 tipos[] = {2, 1, 0}; // banks, cities, payees
        sessao.TipoPesquisa = tipos[Index];
        abre_tela(sessao, desktop, telas::Pesquisa);
        return;
    }
    enter_avanca(*this, {"Text3", Index}, KeyCode, ordem_text3);
}

void ChePrz::DataPre_KeyDown(int &KeyCode, int) {
    if (KeyCode != tecla::Enter) return;
    KeyCode = 0;
    if (DataPre.Text.isEmpty()) Muda(DataPre, hoje().toString("dd/MM/yy"));
    const QString texto = DataPre.Text;
    if (texto.size() != 6 && texto.size() != 8) {
        aviso("Por favor, digite a data no formato 'DD/MM/AA'");
        Muda(DataPre, QString());
        return;
    }
    if (texto.size() == 6 && !texto.contains(u'/')) Muda(DataPre, Format(texto, "@@/@@/@@"));
    const std::optional<QString> data = data_digitada(DataPre.Text, sessao.MesAno);
    if (!data)
        return aviso("Data inválida. Verifique se a data foi digitada no formato 'DD/MM/AA'");
    Muda(DataPre, *data);
    SetFocus(prazo);
}

void ChePrz::prazo_KeyDown(int &KeyCode, int) {
    if (KeyCode != tecla::Enter) return;
    KeyCode = 0;
    if (!inteiro_digitado(prazo.Text)) {
        aviso("Valor inválido para a quantidade de dias.");
        Muda(prazo, QString());
        return;
    }
    SetFocus(parcelas);
}

void ChePrz::parcelas_KeyDown(int &KeyCode, int) {
    if (KeyCode != tecla::Enter) return;
    KeyCode = 0;
    preenche_periodos();
}

void ChePrz::Text5_KeyDown(int &KeyCode, int) {
    if (KeyCode != tecla::Enter) return;
    KeyCode = 0;
    aplica_dia_fixo();
}

} // namespace vexa

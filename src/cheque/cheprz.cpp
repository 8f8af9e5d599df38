// The post-dated screen itself: its controls, loading and clearing, the schedule worked out
// from the total and the days, and its commands.
#include "cheque/cheprz.h"

#include "catalogo/telas.h"
#include "cheque/cheprz_regras.h"
#include "cheque/parcelas.h"
#include "core/conversoes.h"
#include "core/entrada.h"
#include "core/ini.h"
#include "core/relogio.h"

#include <optional>
#include <utility>

namespace vexa {

using namespace prazo;

ChePrz::ChePrz(Sessao &sessao, Desktop &desktop)
    : Tela(telas::ChePrz, "Impressão de Cheques a Prazo", sessao, desktop) {
    LarguraJanela = 620;
    AlturaJanela = 630;
    Text1.mapa().emplace(0, Texto("Valor Total", maximo_text1(0)));
    for (int i = 1; i <= 12; ++i)
        Text1.mapa().emplace(i, Texto("", maximo_text1(i)));
    for (int i = 13; i <= 24; ++i) {
        // The first one's dots are the form's own.
        const QString rotulo = i == 13 ? QStringLiteral("1º Cheque P/..")
                                       : QStringLiteral("%1º Cheque P/.:").arg(i - 12);
        Text1.mapa().emplace(i, Texto(rotulo, maximo_text1(i)));
    }
    for (int i = 0; i < 12; ++i) {
        Text2.mapa().emplace(i, Texto("", 10));
        Text4.mapa().emplace(i, Texto("", 12));
    }
    Text5.Container = &Frame1;

    registra("Text1", Text1);
    registra("DataPre", DataPre);
    registra("prazo", prazo);
    registra("parcelas", parcelas);
    registra("Frame1", Frame1);
    registra("Text5", Text5);
    registra("Text2", Text2);
    registra("Text4", Text4);
    registra("Text3", Text3);
    registra("Label2", Label2);
    registra("Label1", Label1);
    registra("Panel3D1", Panel3D1);
    registra("Command3D1", Command3D1);

    liga("Text1", Evento::Change, [this](int i) { Text1_Change(i); });
    liga("Text1", Evento::Enter, [this](int i) { Text1_Enter(i); });
    liga("Text1", Evento::GotFocus, [this](int i) { Text1_GotFocus(i); });
    liga("Text1", Evento::LostFocus, [this](int i) { Text1_LostFocus(i); });
    ligaTecla("Text1", Evento::KeyDown, [this](int i, int &k, int s) { Text1_KeyDown(i, k, s); });
    liga("Text2", Evento::Change, [this](int i) { Text2_Change(i); });
    liga("Text2", Evento::GotFocus, [this](int i) { Text2[i].SelecionaTudo = true; });
    liga("Text2", Evento::LostFocus, [this](int i) { Text2_LostFocus(i); });
    ligaTecla("Text2", Evento::KeyDown, [this](int i, int &k, int s) { Text2_KeyDown(i, k, s); });
    liga("Text3", Evento::Change, [this](int i) { Text3_Change(i); });
    liga("Text3", Evento::GotFocus, [this](int i) { Text3_GotFocus(i); });
    liga("Text3", Evento::LostFocus, [this](int i) { Text3_LostFocus(i); });
    ligaTecla("Text3", Evento::KeyDown, [this](int i, int &k, int s) { Text3_KeyDown(i, k, s); });
    liga("Text4", Evento::Change, [this](int i) { Text4_Change(i); });
    liga("Text4", Evento::GotFocus, [this](int i) { Text4[i].SelecionaTudo = true; });
    ligaTecla("Text4", Evento::KeyDown, [this](int i, int &k, int s) { Text4_KeyDown(i, k, s); });
    ligaTecla("DataPre", Evento::KeyDown, [this](int, int &k, int s) { DataPre_KeyDown(k, s); });
    ligaTecla("prazo", Evento::KeyDown, [this](int, int &k, int s) { prazo_KeyDown(k, s); });
    ligaTecla("parcelas", Evento::KeyDown, [this](int, int &k, int s) { parcelas_KeyDown(k, s); });
    ligaTecla("Text5", Evento::KeyDown, [this](int, int &k, int s) { Text5_KeyDown(k, s); });
    liga("Command3D1", Evento::Enter, [this](int i) { semConferir_ = i == 1 || i == 2; });
    liga("Command3D1", Evento::LostFocus, [this](int) { semConferir_ = false; });
    liga("Command3D1", Evento::Click, [this](int i) { Command3D1_Click(i); });
}

// --- loading and clearing

void ChePrz::Form_Load() {
    LimpaTela();
    const auto guardado = [this](const QString &chave) {
        return LeGravaIni(sessao.CaminhoIni, Secao, chave, "");
    };
    // The code first: a new code empties the name beside it.
    const std::pair<Texto *, const char *> campos[] = {
        {&Text3[0], "Codigo"}, {&Text3[1], "Cidade"}, {&Text3[2], "Favorecido"}};
    for (const auto &[campo, chave] : campos) {
        const QString v = guardado(chave);
        if (v != "-2") Muda(*campo, v);
    }
    const QString nome = guardado("Banco");
    if (nome != "-2") Label2.Caption = nome;
    // A period stored empty comes back empty: the count skips it where it stands.
    for (int i = 1; i <= 12; ++i) {
        const QString v = guardado(QStringLiteral("prazo%1").arg(i));
        if (v == "-2") break;
        Muda(Text1[i], v);
    }
    SetFocus("Text1", 0);
}

void ChePrz::Form_Activate() {
    const RefControle foco = Foco();
    if (foco.Nome == "Text3") Text3_GotFocus(foco.Index);
}

void ChePrz::LimpaTela() {
    for (auto &[i, t] : Text4)
        Muda(t, QString());
    for (auto &[i, t] : Text1)
        Muda(t, QString());
    for (int i = 1; i <= 4; ++i) {
        const QString v =
            LeGravaIni(sessao.CaminhoIni, "Prazos", QStringLiteral("P%1").arg(i), "").trimmed();
        if (Val(v) > 0) Muda(Text1[i], v);
    }
    for (auto &[i, t] : Text2)
        Muda(t, QString());
    for (auto &[i, t] : Text3)
        Muda(t, QString());
    Label2.Caption.clear();
    for (Texto *t : {&DataPre, &prazo, &parcelas, &Text5})
        Muda(*t, QString());
}

// --- the schedule

int ChePrz::ContaParcelas() const {
    int n = 0;
    for (int i = 1; i <= 12; ++i)
        if (!Text1[i].Text.isEmpty()) ++n;
    return n;
}

void ChePrz::CalculaParcelas() {
    if (Text1[0].Text.isEmpty()) return;
    const int n = ContaParcelas();
    const std::optional<qint64> total = centavos(Text1[0].Text);
    if (n == 0 || !total) return;
    qint64 soma = 0;
    for (int k = 0; k < n; ++k)
        soma += centavos(Text2[k].Text).value_or(0);
    // Amounts that add up were typed or adjusted on purpose, and so were their dates.
    if (soma == *total) return;

    for (int i = 13; i <= 24; ++i)
        Muda(Text1[i], QString());
    for (auto &[i, t] : Text2)
        Muda(t, QString());
    std::optional<QDate> inicio = hoje();
    if (!DataPre.Text.isEmpty()) {
        const auto data = data_digitada(DataPre.Text, sessao.MesAno);
        inicio = data ? le_data(*data) : std::nullopt;
    }
    const QList<qint64> valores = divide_total(*total, n);
    for (int k = 0; k < n; ++k) {
        Muda(Text2[k], formata_centavos(valores[k], Mascara));
        // Each row's date follows its own days, in whatever order they were typed.
        if (inicio) Muda(Text1[k + 13], vencimento(*inicio, int(Val(Text1[k + 1].Text))));
    }
    numera_parcelas();
}

void ChePrz::preenche_periodos() {
    for (int i = 1; i <= 24; ++i)
        Muda(Text1[i], QString());
    const std::optional<int> q = inteiro_digitado(parcelas.Text);
    if (!q || *q == 0) {
        aviso("Valor inválido para o número de parcelas");
        Muda(parcelas, QString());
        return;
    }
    if (*q > 12) {
        aviso("O Programa Calcula Somente até 12 Parcelas", Icone::Nenhum);
        Muda(parcelas, QString());
        return;
    }
    // The days of the last instalment must fit the field's three digits: cut, they would read
    // as other days and give other dates.
    const int passo = int(Val(prazo.Text));
    if ((*q - 1) * passo > 999) {
        aviso("O prazo da última parcela passaria de 999 dias");
        Muda(parcelas, QString());
        return;
    }
    // The first cheque falls on the start date.
    Muda(Text1[1], "00");
    for (int i = 2; i <= *q; ++i)
        Muda(Text1[i], QString::number(int(Val(Text1[i - 1].Text)) + passo));
    const int destino = *q == 12 ? 12 : *q + 1;
    SetFocus("Text1", destino);
    enter_periodo(destino);
}

void ChePrz::aplica_dia_fixo() {
    if (Text1[13].Text.size() < 3) {
        aviso("Primeiro calcule as datas normalmente, preenchendo os campos;\r\ndepois "
              "coloque o dia fixo desejado para que as datas sejam alteradas.");
        SetFocus(Text5);
        return;
    }
    const std::optional<int> dia = inteiro_digitado(Text5.Text);
    if (!dia || *dia < 1 || *dia > 31) {
        aviso("Dia inválido.");
        Muda(Text5, QString());
        return;
    }
    const QString dd = QStringLiteral("%1").arg(*dia, 2, 10, QLatin1Char('0'));
    for (int i = 13; i <= 24 && Text1[i].Text.size() > 3; ++i)
        Muda(Text1[i], dia_fixo(Text1[i].Text, dd));
}

// --- the commands

void ChePrz::Command3D1_Click(int Index) {
    semConferir_ = false;
    switch (Index) {
    case 0:
        if (VerificaCampos() != 1) ImprimeParcelas();
        break;
    case 1:
        Unload();
        break;
    case 2:
        LimpaTela();
        SetFocus("Text1", 0);
        break;
    default:
        break;
    }
}

} // namespace vexa

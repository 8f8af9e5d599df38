#include "reports/filtro.h"

#include "core/conversoes.h"
#include "core/teclas.h"
#include "reports/relato.h"
#include "store/tabelas.h"

#include <QRegularExpression>

namespace vexa {

namespace {

// A LIKE pattern that finds the text anywhere, its own "%", "_" and "\" taken as they are.
QString contem(const QString &texto) {
    QString t = texto;
    t.replace('\\', "\\\\").replace('%', "\\%").replace('_', "\\_");
    return '%' + t + '%';
}

} // namespace

SelecaoLog selecao_filtro_log(const QString &Banco, const QString &DataIni, const QString &DataFim,
                              const QString &ValorIni, const QString &ValorFim,
                              const QString &Favorecido, const QString &Cidade,
                              const QString &Comentario) {
    QStringList condicoes;
    SelecaoLog s;
    if (!Banco.isEmpty()) {
        condicoes << "(Banco = ?)";
        s.Valores << Banco;
    }
    if (!Favorecido.isEmpty()) {
        condicoes << "(Favor = ? COLLATE NOCASE)";
        s.Valores << Favorecido;
    }
    if (!Cidade.isEmpty()) {
        condicoes << "(Local = ? COLLATE NOCASE)";
        s.Valores << Cidade;
    }
    if (!DataIni.isEmpty()) {
        condicoes << "(CVDate(Data) BETWEEN CVDate(?) AND CVDate(?))";
        s.Valores << DataIni << (DataFim.isEmpty() ? DataIni : DataFim);
    }
    if (!ValorIni.isEmpty()) {
        condicoes << "(CDBL(V_CH) BETWEEN CDBL(?) AND CDBL(?))";
        s.Valores << ValorIni << (ValorFim.isEmpty() ? ValorIni : ValorFim);
    }
    if (!Comentario.isEmpty()) {
        condicoes << "(Comentario LIKE ? ESCAPE '\\' OR Comentario1 LIKE ? ESCAPE '\\' OR "
                     "Comentario2 LIKE ? ESCAPE '\\')";
        const QString padrao = contem(Comentario);
        s.Valores << padrao << padrao << padrao;
    }
    s.Sql = "Select * From Log";
    if (!condicoes.isEmpty()) s.Sql += " Where " + condicoes.join(" And ");
    return s;
}

bool MontaFiltroLog(Sessao &s, Desktop &d, const QString &Banco, const QString &DataIni,
                    const QString &DataFim, const QString &ValorIni, const QString &ValorFim,
                    const QString &Favorecido, const QString &Cidade, const QString &Comentario) {
    if (AbreTabelas(s, d, 0, 0, 0, 0) == -2) return false;
    const SelecaoLog selecao = selecao_filtro_log(Banco, DataIni, DataFim, ValorIni, ValorFim,
                                                  Favorecido, Cidade, Comentario);
    if (!Conjunto(s, TabLog).Abre(s.Banco->db(), selecao.Sql, selecao.Valores)) {
        avisa_registro_ilegivel(s, d);
        return false;
    }
    if (auto *relato = dynamic_cast<Relato *>(d.Aberta(telas::Relato))) {
        relato->CarregaListaLog();
        relato->Refresh();
    }
    return true;
}

Filtro::Filtro(Sessao &sessao, Desktop &desktop) : Tela(telas::Filtro, "Filtro", sessao, desktop) {
    registra("Text1", Text1);
    registra("Label1", Label1);
    registra("Label2", Label2);
    registra("Command3D1", Command3D1);
    liga("Text1", Evento::GotFocus, [this](int i) { Text1_GotFocus(i); });
    liga("Text1", Evento::Change, [this](int i) { Text1_Change(i); });
    liga("Text1", Evento::LostFocus, [this](int i) { Text1_LostFocus(i); });
    ligaTecla("Text1", Evento::KeyDown, [this](int i, int &k, int s) { Text1_KeyDown(i, k, s); });
    liga("Command3D1", Evento::Click, [this](int i) { Command3D1_Click(i); });
}

void Filtro::Form_Load() {
    SetFocus("Text1", 0);
}

void Filtro::Text1_GotFocus(int Index) {
    // Entering a field again discards what stood there.
    Text1[Index].Text.clear();
}

void Filtro::Text1_Change(int Index) {
    const int limite = Index == 0 ? 3 : (Index == 1 || Index == 2) ? 8 : 0;
    if (limite == 0 || Text1[Index].Text.size() <= limite) return;
    Text1[Index].Text.truncate(limite);
    desktop.MsgBox("Tamanho Máximo deste campo...", Botoes::OK, "Erro", Icone::Exclamacao);
}

void Filtro::recusa(int Index, const QString &mensagem) {
    Text1[Index].Text.clear();
    desktop.MsgBox(mensagem, Botoes::OK, "Erro");
    SetFocus("Text1", Index);
}

void Filtro::Text1_LostFocus(int Index) {
    QString texto = Text1[Index].Text;
    if (texto.isEmpty()) return;
    switch (Index) {
    case 0: {
        if (Val(texto) == 0) {
            Text1[0].Text.clear();
            return;
        }
        texto = Format(QString::number(Val(texto), 'f', 0), "000");
        Text1[0].Text = texto;
        if (ExisteCodigo(sessao, texto, TabBancos) == 0) {
            // A bank table that could not be read says nothing of the code typed.
            if (!Conjunto(sessao, TabBancos).Aberto())
                return avisa_registro_ilegivel(sessao, desktop);
            return recusa(0, "Banco Inválido...");
        }
        Label2.Caption = NomeBanco(sessao, texto);
        return;
    }
    case 1:
    case 2: {
        if (texto.size() < 3)
            texto = Format(QString::number(Val(texto), 'f', 0), "00") + sessao.MesAno;
        // Six digits: "1/1/26" has six characters too, and the mask would show it as
        // "1//1//26", a date that finds nothing.
        static const QRegularExpression ddmmaa(QStringLiteral("^[0-9]{6}$"));
        if (!ddmmaa.match(texto).hasMatch())
            return recusa(Index, "Voce deve entrar com (ddmmaa) diamesano...");
        if (!DataValida(texto)) return recusa(Index, "Data Inválida...");
        Text1[Index].Text = Format(texto, "@@/@@/@@");
        return;
    }
    case 3:
    case 4: {
        const auto valor = centavos(texto);
        if (!valor) return recusa(Index, "O valor especificado não é um valor válido!");
        Text1[Index].Text = formata_centavos(*valor, "##,###,###,##0.00");
        return;
    }
    default:
        return;
    }
}

void Filtro::Text1_KeyDown(int Index, int &KeyCode, int) {
    if (KeyCode != tecla::Enter) return;
    KeyCode = 0;
    // The comment, the last field, has no field after it: Enter goes to OK, as from the city.
    if (Index >= 6) return SetFocus("Command3D1", 0);
    SetFocus("Text1", Index + 1);
}

void Filtro::Command3D1_Click(int Index) {
    // A filter the register could not answer leaves the screen open with its criteria, to be
    // tried again.
    if (Index == 0 &&
        !MontaFiltroLog(sessao, desktop, Text1[0].Text, Text1[1].Text, Text1[2].Text, Text1[3].Text,
                        Text1[4].Text, Text1[5].Text, Text1[6].Text, Text1[7].Text))
        return;
    Unload();
}

} // namespace vexa

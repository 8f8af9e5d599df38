#include "copy/cmpcopia.h"

#include "cheque/main.h"
#include "core/arquivo.h"
#include "core/conversoes.h"
#include "core/entrada.h"
#include "core/ini.h"
#include "printer/impressao.h"
#include "printer/sistema.h"
#include "registers/cadastro.h"
#include "store/recordset.h"
#include "store/tabelas.h"

#include <map>

namespace vexa {

namespace {

const QString TituloCopia = QStringLiteral("Cópia do Cheque");
// A run-time error, told as the others (those of the system printer and of the day's file)
// with no title.
const QString ErroMontagem =
    QStringLiteral("Houve Problemas Ao Montar o Layout de Cheque!!\r"
                   "Favor Revisar o Layout de Cópia que foi Montado, ou Escolha Outro Layout");
// What a file write that didn't reach the disk reports, as the other run-time errors.
constexpr int ErroArquivo = 75;

QString caixa_alta(const QString &texto) {
    return texto.toUpper();
}

// The cells of the page: each holds a whole item at its first column.
class Pagina {
  public:
    // False when the cell lies outside the page.
    bool poe(int linha, int coluna, const QString &texto) {
        if (linha < 1 || linha > LinhasPagina || coluna < 0 || coluna >= ColunasPagina)
            return false;
        if (!texto.isEmpty()) celulas_[linha][coluna] = texto;
        return true;
    }
    // An item stays at its column while it ends before column 90; else it ends at 80.
    // tamanho is the length the test counts, which for some items leaves out their prefix.
    bool poe_item(int linha, int coluna, const QString &texto, int tamanho) {
        return poe(linha, coluna + tamanho < 90 ? coluna : LarguraLinha - tamanho, texto);
    }

    QString texto() const {
        QString pagina;
        for (int linha = 1; linha <= LinhasTexto; ++linha) {
            QString l;
            const auto cel = celulas_.find(linha);
            if (cel != celulas_.end()) {
                for (const auto &[coluna, item] : cel->second) {
                    if (coluna >= LarguraLinha) break;
                    qsizetype brancos = qMax<qsizetype>(0, coluna - l.size());
                    // A cell that would pass column 90 after what the line holds ends at 80.
                    if (l.size() + brancos + item.size() > 90)
                        brancos = qMax<qsizetype>(0, LarguraLinha - item.size() - l.size());
                    l += QString(brancos, u' ') + item;
                }
            }
            pagina += l;
            if (linha < LinhasTexto) pagina += "\r\n";
        }
        return pagina;
    }

  private:
    std::map<int, std::map<int, QString>> celulas_;
};

LayoutCopia layout_de(const RecordSet &rs) {
    LayoutCopia l;
    for (int i = 1; i <= 8; ++i)
        l.l[i] = int(Val(rs.Campo("l" + QString::number(i))));
    for (int i = 1; i <= 11; ++i)
        l.c[i] = int(Val(rs.Campo("c" + QString::number(i))));
    return l;
}

// The copy's layouts are read through a record set of their own: the register screen keeps
// its shared one where its list left it.
bool abre_layouts(Sessao &s, Desktop &d, RecordSet &rs, const QString &onde = QString(),
                  const QString &valor = QString()) {
    if (AbreTabelas(s, d, 0, 0, 0, 0) == -2) return false;
    QString sql = "Select * From Script";
    QVariantList valores;
    if (!onde.isEmpty()) {
        sql += " Where (" + onde + "=?)";
        valores << valor;
    }
    return rs.Abre(s.Banco->db(), sql, valores);
}

} // namespace

ChequeCopia cheque_do_main(Sessao &s, const Main &m) {
    ChequeCopia c;
    c.Banco = m.Text1[0].Text;
    c.NomeBanco = m.Label1[6].Caption;
    if (c.NomeBanco.isEmpty() && !c.Banco.isEmpty()) c.NomeBanco = NomeBanco(s, c.Banco);
    c.Valor = m.Text1[1].Text;
    c.Favorecido = m.Text1[2].Text;
    c.Cidade = m.Text1[3].Text;
    c.Data = m.Text1[4].Text;
    c.Numero = m.Text1[6].Text;
    for (int i = 0; i < 3; ++i)
        c.Comentarios[i] = m.Text2.contains(i) ? m.Text2[i].Text : QString();
    return c;
}

std::optional<QString> MontaPagina(const LayoutCopia &layout, const ChequeCopia &cheque,
                                   const QString &extenso) {
    const auto &l = layout.l;
    const auto &c = layout.c;
    const auto [extenso1, extenso2] = QuebraExtenso(extenso.trimmed());
    Pagina p;
    bool ok = p.poe_item(l[1], c[1], "R$" + cheque.Valor, int(cheque.Valor.size()));
    ok = ok && p.poe_item(l[6], c[9], cheque.Banco + "-" + cheque.NomeBanco,
                          int(cheque.Banco.size() + cheque.NomeBanco.size()));
    ok = ok && p.poe_item(l[2], c[2], extenso1, int(extenso1.size()));
    if (!extenso2.isEmpty()) ok = ok && p.poe_item(l[3], c[3], extenso2, int(extenso2.size()));
    if (cheque.Numero.isEmpty()) {
        ok = ok && p.poe(l[7], c[10], QStringLiteral("Nº(Sem Número)"));
    } else {
        const int n = int(cheque.Numero.size());
        ok = ok &&
             p.poe(l[7], c[10] + n < 90 ? c[10] : LarguraLinha - (n + 3), "Nº" + cheque.Numero);
    }
    ok = ok && p.poe_item(l[5], c[5], cheque.Cidade, int(cheque.Cidade.size()));
    const QString dia = cheque.Data.left(2);
    const QString mes = MesExtenso(QString::number(int(Val(cheque.Data.mid(3, 2)))));
    const QString aa = cheque.Data.mid(6, 2);
    const QString ano = (Val(aa) > 50 || Val(aa) < 0 ? "19" : "20") + aa;
    ok = ok && p.poe_item(l[5], c[6], dia, int(dia.size()));
    ok = ok && p.poe_item(l[5], c[7], mes, int(mes.size()));
    ok = ok && p.poe_item(l[5], c[8], ano, int(ano.size()));
    ok = ok && p.poe_item(l[4], c[4], cheque.Favorecido, int(cheque.Favorecido.size()));
    // The three comment lines stay on the page: a first line past 20 starts them at 19.
    const int primeira = l[8] >= 21 ? 19 : l[8];
    for (int i = 0; i < 3 && ok; ++i) {
        const QString &t = cheque.Comentarios.value(i);
        ok = p.poe_item(primeira + i, c[11], t, int(t.size()));
    }
    if (!ok) return std::nullopt;
    return p.texto();
}

QString nome_arquivo_copia(const QString &Hoje6) {
    return "cop" + Hoje6.left(4) + "." + Hoje6.mid(4, 2);
}

QString aviso_linhas(const QString &texto) {
    QString aviso;
    const QStringList linhas = texto.split(u'\n');
    for (int i = 0; i < linhas.size(); ++i)
        if (linhas[i].size() > LarguraLinha)
            aviso += "\nLinha " + QString::number(i + 1) + " Extrapola Tamanho Maximo!";
    return aviso;
}

// --- CmpCopia

CmpCopia::CmpCopia(Sessao &sessao, Desktop &desktop)
    : Tela(telas::CmpCopia, TituloCopia, sessao, desktop) {
    registra_controles();
}

CmpCopia::CmpCopia(Sessao &sessao, Desktop &desktop, const ChequeCopia &cheque)
    : Tela(telas::CmpCopia, TituloCopia, sessao, desktop), cheque_(cheque), chequeDado_(true) {
    registra_controles();
}

void CmpCopia::registra_controles() {
    tituloBase_ = Caption;
    CopiaTxt.MultiLine = true;
    Info.Visible = false;
    registra("Label1", Label1);
    registra("Combo1", Combo1);
    registra("CopiaTxt", CopiaTxt);
    registra("Frame1", Frame1);
    registra("OpEnvio", OpEnvio);
    registra("NomeArq", NomeArq);
    registra("CheckImpMai", CheckImpMai);
    registra("CheckImpInv", CheckImpInv);
    registra("Info", Info);
    registra("BtnCmd", BtnCmd);
    liga("Combo1", Evento::Click, [this](int) { Combo1_Click(); });
    liga("CheckImpMai", Evento::Click, [this](int) { CheckImpMai_Click(); });
    liga("CopiaTxt", Evento::Change, [this](int) { CopiaTxt_Change(); });
    liga("BtnCmd", Evento::Click, [this](int i) { BtnCmd_Click(i); });
}

void CmpCopia::Form_Load() {
    if (!chequeDado_) {
        if (const auto *m = dynamic_cast<const Main *>(desktop.Aberta(telas::Main)))
            cheque_ = cheque_do_main(sessao, *m);
    }
    RecordSet rs;
    if (!abre_layouts(sessao, desktop, rs)) {
        avisa_base_ausente(sessao, desktop);
        sessao.FechaTela = 1;
        return;
    }
    const QString escolhido = LeGravaIni(sessao.CaminhoIni, "Opcoes", "Script", "").left(3);
    int indice = -1, doBanco = -1;
    for (rs.MoveFirst(); !rs.Eof(); rs.MoveNext()) {
        const QString codigo = rs.Campo("Codigo").left(3);
        if (codigo == escolhido) indice = Combo1.ListCount();
        if (!cheque_.Banco.isEmpty() && codigo == cheque_.Banco) doBanco = Combo1.ListCount();
        Combo1.AddItem(rs.Campo("Nome"));
    }
    // Until the operator chooses one, the copy takes the layout of the cheque's own bank.
    if (indice < 0) indice = doBanco;

    const QString envio = LeGravaIni(sessao.CaminhoIni, "Opcoes", "EnvioCopia", "");
    envioLido_ = OpEnvio.contains(int(Val(envio))) && envio != "-2" ? int(Val(envio)) : 1;
    for (auto &[i, op] : OpEnvio)
        op.Value = i == envioLido_ ? 1 : 0;
    maiLido_ = LeGravaIni(sessao.CaminhoIni, "Opcoes", "UsarImpMai", "").startsWith(u'1') ? 1 : 0;
    CheckImpMai.Value = maiLido_;
    invLido_ = sessao.UsaInvertida == 1 ? 1 : 0;
    CheckImpInv.Value = invLido_;

    Caption = tituloBase_ + " [01-001]";
    NomeArq.Caption = nome_arquivo_copia(sessao.Hoje6);
    atualiza_posicao();

    if (indice >= 0) {
        Combo1.ListIndex = indice;
        Combo1.Text = Combo1.List(indice);
        Combo1_Click();
    }
}

void CmpCopia::Form_Unload() {
    const auto grava = [this](const QString &chave, int lido, int agora) {
        if (lido != agora) LeGravaIni(sessao.CaminhoIni, "Opcoes", chave, QString::number(agora));
    };
    grava("EnvioCopia", envioLido_, envio());
    grava("UsarImpMai", maiLido_, CheckImpMai.Value ? 1 : 0);
    grava("UsarImpInv", invLido_, CheckImpInv.Value ? 1 : 0);
    sessao.UsaInvertida = CheckImpInv.Value ? 1 : 0;
}

int CmpCopia::envio() const {
    for (const auto &[i, op] : OpEnvio)
        if (op.Value) return i;
    return 1;
}

QString CmpCopia::CaminhoArquivo() const {
    return sessao.CaminhoApp + "/" + nome_arquivo_copia(sessao.Hoje6);
}

void CmpCopia::Combo1_Click() {
    if (Combo1.ListIndex < 0) return;
    RecordSet rs;
    if (!abre_layouts(sessao, desktop, rs, "Nome", Combo1.List(Combo1.ListIndex)) ||
        rs.RecordCount() == 0)
        return;
    rs.MoveFirst();
    LeGravaIni(sessao.CaminhoIni, "Opcoes", "Script", rs.Campo("Codigo"));
    MontaCopia();
}

bool CmpCopia::MontaCopia() {
    RecordSet rs;
    if (Combo1.ListIndex < 0 ||
        !abre_layouts(sessao, desktop, rs, "Nome", Combo1.List(Combo1.ListIndex)) ||
        rs.RecordCount() == 0)
        return false;
    rs.MoveFirst();
    MontaExtenso(sessao, desktop, cheque_.Valor);
    // The words end where the printer's answer ends.
    const QString extenso = sessao.ValorExtenso.section(QChar(0), 0, 0);
    const auto pagina = MontaPagina(layout_de(rs), cheque_, extenso);
    if (!pagina) {
        desktop.MsgBox(ErroMontagem);
        Muda(CopiaTxt, QString());
        return false;
    }
    QString texto = *pagina;
    texto.replace("\r\n", "\n");
    Muda(CopiaTxt, CheckImpMai.Value ? caixa_alta(texto) : texto);
    cursor_ = 0;
    atualiza_posicao();
    return true;
}

void CmpCopia::CheckImpMai_Click() {
    // Ticking shows the page as it will print; unticking leaves the operator's text alone.
    if (CheckImpMai.Value) Muda(CopiaTxt, caixa_alta(CopiaTxt.Text));
}

void CmpCopia::CopiaTxt_Change() {
    cursor_ = qMin<int>(cursor_, int(CopiaTxt.Text.size()));
    atualiza_posicao();
}

void CmpCopia::CopiaTxt_Cursor(int Posicao) {
    cursor_ = qBound(0, Posicao, int(CopiaTxt.Text.size()));
    atualiza_posicao();
}

void CmpCopia::atualiza_posicao() {
    const QString antes = CopiaTxt.Text.left(cursor_);
    const int linha = int(antes.count(u'\n')) + 1;
    const int coluna = int(antes.size() - (antes.lastIndexOf(u'\n') + 1)) + 1;
    Caption = tituloBase_ + " [" + QStringLiteral("%1").arg(linha, 2, 10, QChar(u'0')) + "-" +
              QStringLiteral("%1").arg(coluna, 3, 10, QChar(u'0')) + "]";
    const QString aviso = falta_layout() + aviso_linhas(CopiaTxt.Text);
    if (Info.Caption != aviso) Info.Caption = aviso;
    Info.Visible = !aviso.isEmpty();
    BtnCmd[0].Enabled = aviso.isEmpty();
}

QString CmpCopia::falta_layout() const {
    if (Combo1.ListIndex >= 0 || !CopiaTxt.Text.trimmed().isEmpty()) return {};
    if (Combo1.ListCount() == 0)
        return QStringLiteral("Não há layout de cópia cadastrado: cadastre um em Cadastro, "
                              "Layout de Cópia.");
    return QStringLiteral("Escolha o layout da cópia em \"Layout / Script\".");
}

QStringList CmpCopia::LinhasCopia() const {
    return CopiaTxt.Text.split(u'\n');
}

void CmpCopia::BtnCmd_Click(int Index) {
    if (Index == 1) return Unload();
    if (CopiaTxt.Text.trimmed().isEmpty()) {
        desktop.MsgBox("A cópia está vazia: não há o que enviar.", Botoes::OK, TituloCopia,
                       Icone::Exclamacao);
        return;
    }
    switch (envio()) {
    case 1:
        EnviaCopia();
        break;
    case 2:
        ImprimeWindows();
        break;
    default:
        GravaArquivo();
        break;
    }
}

void CmpCopia::EnviaCopia() {
    QStringList linhas;
    for (const QString &l : LinhasCopia())
        linhas << l.left(LarguraLinha);
    if (linhas.size() > MaximoLinhas) {
        desktop.MsgBox("O numero de linhas ultrapassa a capacidade da impressora!", Botoes::OK,
                       TituloCopia, Icone::Exclamacao);
        return;
    }
    if (!pede_documento(desktop, TituloCopia)) return;
    Vexa32 &imp = *sessao.Impressora;
    if (imp.IniciaPorta(sessao.PortaImpressora) != 1) {
        desktop.MsgBox("Problemas na abertura da porta de comunicacao", Botoes::OK, TituloCopia,
                       Icone::Critico);
        return;
    }
    imp.TravaDoc(1);
    imp.FormataTX(QString(), 3, 0, 0, 0, 0);
    const bool invertida = CheckImpInv.Value != 0;
    const QString inverte = QStringLiteral("\x1B") + "I";
    qint16 resultado = 1;
    if (invertida) resultado = imp.TolvaneTX(inverte);
    // Inverted, the sheet comes out upside down: its last line goes first.
    for (int i = 0; i < linhas.size(); ++i) {
        const QString &l = linhas[invertida ? linhas.size() - 1 - i : i];
        resultado = imp.TolvaneTX(ConverteTexto(CheckImpMai.Value ? caixa_alta(l) : l) + "\r\n");
    }
    if (invertida) resultado = imp.TolvaneTX(inverte);
    imp.TravaDoc(0);
    const qint16 fecha = imp.FechaPorta();
    if (resultado != 1 || fecha != 1)
        desktop.MsgBox("Problemas na Transmissao da copia", Botoes::OK, TituloCopia,
                       Icone::Critico);
}

void CmpCopia::GravaArquivo() {
    const QString pagina = "\"" + LinhasCopia().join("\r\n") + "\"\r\n";
    if (!acrescenta_inteiro(CaminhoArquivo(), para_ansi(pagina)))
        mostra_erro_impressao(desktop, ErroArquivo);
}

void CmpCopia::ImprimeWindows() {
    const int erro = desktop.ImprimeSistema(documento_impressao(TituloCopia, {CopiaTxt.Text}, 12));
    mostra_erro_impressao(desktop, erro);
}

} // namespace vexa

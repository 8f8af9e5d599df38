// The copy screens driven as the operator does: the layout register, its graphic adjust, and
// the copy with its three targets.
#include "catalogo/telas.h"
#include "cheque/main.h"
#include "copy/ajustescript.h"
#include "copy/cmpcopia.h"
#include "copy/script.h"
#include "core/arquivo.h"
#include "core/conversoes.h"
#include "core/ini.h"
#include "printer/extenso.h"
#include "registers/registros_apoio.h"
#include "store/bancos_padrao.h"

#include <QFile>
#include <QSqlQuery>

using namespace vexa;

namespace {

// A whole layout in the order of Text1: code, name, l1 l2 l3 l6 l7 l4 l5 l8, c1 c2 c3 c9 c10
// c4 c5 c11 c6 c7 c8.
const QStringList LayoutPadrao = {"001", "Padrao", "2", "5", "6", "1",  "2", "8",  "10", "14", "60",
                                  "5",   "5",      "2", "2", "5", "30", "5", "52", "56", "68"};

class CopiaTeste : public teste::Registros {
  protected:
    void grava_layout(const QStringList &valores) {
        ASSERT_NE(AbreTabelas(s, d, 0, 0, 0, 0), -2);
        RecordSet rs;
        ASSERT_TRUE(rs.Abre(s.Banco->db(), "Select * From Script"));
        rs.AddNew();
        for (int i = 0; i < CamposScript().size(); ++i)
            rs.Define(CamposScript()[i], valores[i]);
        ASSERT_TRUE(rs.Update());
    }
    // The layout stored and chosen for the copy.
    void grava_e_escolhe(const QStringList &valores = LayoutPadrao) {
        grava_layout(valores);
        LeGravaIni(s.CaminhoIni, "Opcoes", "Script", valores[0]);
    }
    // LayoutPadrao under another code and name.
    static QStringList outro_layout(const QString &codigo, const QString &nome) {
        QStringList r = LayoutPadrao;
        r[0] = codigo;
        r[1] = nome;
        return r;
    }
    QStringList linha_script(const QString &codigo) {
        RecordSet rs;
        rs.Abre(s.Banco->db(), "Select * From Script Where (Codigo=?)", {codigo});
        QStringList r;
        if (rs.RecordCount() == 0) return r;
        rs.MoveFirst();
        for (const QString &c : CamposScript())
            r << rs.Campo(c);
        return r;
    }
    QString opcao(const QString &chave) { return LeGravaIni(s.CaminhoIni, "Opcoes", chave, ""); }
};

// --- the layout register

class ScriptTeste : public CopiaTeste {};

// Each field once left with Enter; after the last, "Não" stores nothing and "Sim" stores
// the layout, the code padded, every field in its column.
TEST_F(ScriptTeste, IncluirPadsTheCodeAndStoresEveryFieldInItsColumn) {
    Script &t = abre<Script>();
    QStringList valores = LayoutPadrao;
    valores[0] = "7";
    for (const Resposta resposta : {Resposta::No, Resposta::Yes}) {
        t.Clica("Command3D1", 0);
        for (int i : {0, 1, 2})
            EXPECT_FALSE(t.Command3D1[i].Enabled);
        EXPECT_FALSE(t.Command3D2.Enabled);
        EXPECT_EQ(t.Foco(), (RefControle{"Text1", 0}));
        d.Mensagens.clear();
        d.Respostas = {resposta};
        for (int i = 0; i <= 20; ++i)
            digita(t, "Text1", i, valores[i]);
        ASSERT_EQ(d.Mensagens.size(), 1);
        EXPECT_EQ(d.Mensagens[0].Texto, "Deseja Guardar este Script?");
        EXPECT_EQ(d.Mensagens[0].Titulo, "Cadastro de Script");
        EXPECT_EQ(d.Mensagens[0].Botoes_, Botoes::YesNo);
        EXPECT_EQ(linha_script("007").isEmpty(), resposta == Resposta::No);
        EXPECT_TRUE(t.Command3D1[0].Enabled);
    }
    valores[0] = "007";
    EXPECT_EQ(linha_script("007"), valores);
    EXPECT_EQ(t.List1.Itens, QStringList{"007        -Padrao"});
    EXPECT_EQ(t.Foco(), (RefControle{"Command3D1", 0}));
    for (int i : {1, 2})
        EXPECT_TRUE(t.Command3D1[i].Enabled);
    EXPECT_TRUE(t.Command3D2.Enabled);
}

// The code comes first: leaving for another field without one goes back to it, and an existing
// code is refused with the focus staying.
TEST_F(ScriptTeste, TheCodeComesFirstAndAnExistingOneIsRefused) {
    grava_layout(LayoutPadrao);
    Script &t = abre<Script>();
    t.Clica("Command3D1", 0);
    t.SetFocus("Text1", 5);
    EXPECT_EQ(t.Foco(), (RefControle{"Text1", 0}));
    digita(t, "Text1", 0, "1");
    EXPECT_EQ(d.Textos(), QStringList{"Este Código Já Existe"});
    EXPECT_EQ(t.Text1[0].Text, "");
    EXPECT_EQ(t.Foco(), (RefControle{"Text1", 0}));
    digita(t, "Text1", 0, "2");
    EXPECT_EQ(t.Text1[0].Text, "002");
    EXPECT_EQ(t.Foco(), (RefControle{"Text1", 1}));
}

TEST_F(ScriptTeste, SelectAlterAndDelete) {
    grava_layout(LayoutPadrao);
    QStringList outro = outro_layout("002", "Outro");
    grava_layout(outro);
    Script &t = abre<Script>();
    ASSERT_EQ(t.List1.Itens, (QStringList{"001        -Padrao", "002        -Outro"}));
    t.List1.ListIndex = 1;
    t.Clica("List1");
    for (int i = 0; i <= 20; ++i)
        EXPECT_EQ(t.Text1[i].Text, outro[i]) << i;

    t.Text1[1].Text = "Outro Nome";
    t.Text1[20].Text = "70";
    t.Clica("Command3D1", 1);
    outro[1] = "Outro Nome";
    outro[20] = "70";
    EXPECT_EQ(linha_script("002"), outro);
    EXPECT_EQ(linha_script("001"), LayoutPadrao);

    t.List1.ListIndex = 0;
    t.Clica("List1");
    t.Clica("Command3D1", 2);
    EXPECT_TRUE(linha_script("001").isEmpty());
    EXPECT_EQ(t.List1.Itens, QStringList{"002        -Outro Nome"});
}

TEST_F(ScriptTeste, SearchNarrowsByCodeOrName) {
    grava_layout(LayoutPadrao);
    grava_layout(outro_layout("012", "Bancario"));
    Script &t = abre<Script>();
    t.Digita("Text2", -1, "0");
    EXPECT_EQ(t.List1.ListCount(), 2);
    t.Digita("Text2", -1, "012");
    EXPECT_EQ(t.List1.Itens, QStringList{"012 - Bancario"});
    t.Digita("Text2", -1, "pad");
    EXPECT_EQ(t.List1.Itens, QStringList{"001 - Padrao"});
}

// A write the database refuses, because another program holds its write lock, is told and
// leaves the table as it was. The register's connection gives up at once rather than wait.
struct CasoRecusa {
    const char *Nome;
    std::function<void(Script &)> Comando;
    QString Aviso;
};

class ScriptRecusado : public ScriptTeste, public ::testing::WithParamInterface<CasoRecusa> {
  protected:
    void TearDown() override {
        QSqlDatabase::database(Trava, false).close();
        QSqlDatabase::removeDatabase(Trava);
        ScriptTeste::TearDown();
    }
    void trava() {
        QSqlDatabase outra = QSqlDatabase::addDatabase("QSQLITE", Trava);
        outra.setDatabaseName(s.CaminhoApp + "/" + s.NomeMDB);
        ASSERT_TRUE(outra.open());
        ASSERT_TRUE(QSqlQuery(outra).exec("BEGIN IMMEDIATE"));
        ASSERT_TRUE(QSqlQuery(s.Banco->db()).exec("PRAGMA busy_timeout = 0"));
    }
    static inline const QString Trava = QStringLiteral("trava-script");
};

TEST_P(ScriptRecusado, TellsTheOperatorAndKeepsTheTable) {
    grava_layout(LayoutPadrao);
    Script &t = abre<Script>();
    t.List1.ListIndex = 0;
    t.Clica("List1");
    trava();
    GetParam().Comando(t);
    ASSERT_FALSE(d.Mensagens.isEmpty());
    EXPECT_EQ(d.Mensagens.last().Texto, GetParam().Aviso);
    EXPECT_EQ(d.Mensagens.last().Titulo, "Erro");
    EXPECT_EQ(linha_script("001"), LayoutPadrao);
    EXPECT_TRUE(linha_script("007").isEmpty());
    EXPECT_EQ(t.List1.Itens, QStringList{"001        -Padrao"});
}

const QString NaoGravado = "O registro não foi gravado: o banco de dados não aceitou a gravação.";
void incluir(Script &t) {
    t.Clica("Command3D1", 0);
    for (int i = 0; i <= 20; ++i)
        t.Text1[i].Text = i ? LayoutPadrao[i] : "007";
    t.SetFocus("Text1", 20);
    t.Tecla(13); // "Deseja Guardar este Script?": Yes
}
void alterar(Script &t) {
    t.Text1[1].Text = "Outro Nome";
    t.Clica("Command3D1", 1);
}
void excluir(Script &t) {
    t.Clica("Command3D1", 2);
}
INSTANTIATE_TEST_SUITE_P(
    Casos, ScriptRecusado,
    ::testing::Values(CasoRecusa{"Incluir", incluir, NaoGravado},
                      CasoRecusa{"Alterar", alterar, NaoGravado},
                      CasoRecusa{"Excluir", excluir,
                                 "O registro não foi excluído: o banco de dados não aceitou a "
                                 "exclusão."}),
    [](const auto &info) { return std::string(info.param.Nome); });

// --- the graphic adjust

class AjusteScriptTeste : public CopiaTeste {
  protected:
    AjusteScript &abre_ajuste(const QStringList &valores = LayoutPadrao) {
        script = &abre<Script>();
        for (int i = 0; i <= 20; ++i)
            script->Text1[i].Text = valores[i];
        script->Clica("Command3D2");
        auto *a = d.Tela_<AjusteScript>("AjusteScript");
        EXPECT_NE(a, nullptr);
        return *a;
    }
    static void tecla(AjusteScript &a, int caixa, int codigo, int vezes = 1) {
        a.SetFocus("Text1", caixa);
        for (int i = 0; i < vezes; ++i)
            a.Tecla(codigo);
    }
    QStringList campos() const {
        QStringList r;
        for (const auto &[i, c] : script->Text1)
            r << c.Text;
        return r;
    }
    Script *script = nullptr;
};

struct CasoSeta {
    const char *Nome;
    int Caixa;
    int Tecla;
    int Vezes;
    int Rotulo;
    QString Esperado;
};

class SetasScript : public AjusteScriptTeste, public ::testing::WithParamInterface<CasoSeta> {};

TEST_P(SetasScript, StopAtTheLimits) {
    AjusteScript &a = abre_ajuste();
    const CasoSeta &c = GetParam();
    tecla(a, c.Caixa, c.Tecla, c.Vezes);
    EXPECT_EQ(a.Label2[c.Rotulo].Caption, c.Esperado);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, SetasScript,
    ::testing::Values(
        // No box starts right of column 80 nor below line 20, nor left of column 1.
        CasoSeta{"BancoAteColuna80", 8, 39, 100, 16, "080"},
        CasoSeta{"BancoAteColuna1", 8, 37, 100, 16, "001"},
        CasoSeta{"ComentarioAteLinha20", 9, 40, 30, 17, "020"},
        CasoSeta{"NumeroAteLinha1", 10, 38, 30, 13, "001"},
        // The first five boxes keep to their lines as on the cheque.
        CasoSeta{"ValorDesceAte5", 0, 40, 30, 0, "005"},
        CasoSeta{"ValorSobeAte1", 0, 38, 30, 0, "001"},
        CasoSeta{"CidadeDesceAte17", 4, 40, 30, 4, "017"},
        CasoSeta{"CidadeSobeAte10", 4, 38, 30, 4, "010"},
        CasoSeta{"Extenso1SobeAte4", 1, 38, 30, 1, "004"},
        // The date boxes move sideways, never off the city's line.
        CasoSeta{"DiaAteColuna80", 5, 39, 100, 10, "080"},
        CasoSeta{"AnoNaoSobe", 7, 38, 3, 4, "010"}),
    [](const auto &info) { return std::string(info.param.Nome); });

TEST_F(AjusteScriptTeste, TheDateFollowsTheCityUpAndDownOnly) {
    AjusteScript &a = abre_ajuste();
    tecla(a, 4, 40, 2);
    tecla(a, 4, 39, 3);
    for (int i = 5; i <= 7; ++i)
        EXPECT_EQ(a.Text1[i].Top, a.Text1[4].Top);
    EXPECT_EQ(a.Label2[4].Caption, "012");
    EXPECT_EQ(a.Label2[9].Caption, "033");
    EXPECT_EQ(a.Label2[10].Caption, "052");
}

TEST_F(AjusteScriptTeste, FocusHighlightsTheLabelsOfTheBox) {
    AjusteScript &a = abre_ajuste();
    a.SetFocus("Text1", 6);
    EXPECT_EQ(a.Label2[4].BackColor, AjusteGrafico::CorDestaque);
    EXPECT_EQ(a.Label2[11].BackColor, AjusteGrafico::CorDestaque);
    a.SetFocus("Text1", 8);
    EXPECT_EQ(a.Label2[4].BackColor, SemCor);
    EXPECT_EQ(a.Label2[15].BackColor, AjusteGrafico::CorDestaque);
}

// One field of the layout moved where a rule of its line fails: the box the focus goes to.
struct CasoCulpado {
    const char *Nome;
    QList<std::pair<int, QString>> Mudancas; // by the index of Text1 of Script
    QString Culpado;
    int Caixa;
};

class CulpadoScript : public AjusteScriptTeste,
                      public ::testing::WithParamInterface<CasoCulpado> {};

TEST_P(CulpadoScript, FailedOkFocusesTheBlamedBoxAndLeavesTheRegisterUntouched) {
    QStringList valores = LayoutPadrao;
    for (const auto &[campo, valor] : GetParam().Mudancas)
        valores[campo] = valor;
    AjusteScript &a = abre_ajuste(valores);
    const QStringList antes = campos();
    a.Clica("Command3D1", 0);
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_EQ(d.Mensagens[0].Titulo, "Layout de Cópia");
    EXPECT_EQ(d.Mensagens[0].Icone_, Icone::Exclamacao);
    const QString &culpado = GetParam().Culpado;
    EXPECT_TRUE(d.Mensagens[0].Texto.startsWith("Há problemas no posicionamento do campo " +
                                                culpado + ". O campo " + culpado + " "))
        << d.Mensagens[0].Texto.toStdString();
    EXPECT_EQ(a.Foco(), (RefControle{"Text1", GetParam().Caixa}));
    EXPECT_FALSE(a.Descarregada());
    EXPECT_EQ(campos(), antes);
}

// Over the layout of LayoutPadrao: amount at 2:60, bank 1:2, number 2:2, payee 8:5, city
// 10:30 with the date at 52, 56 and 68.
INSTANTIATE_TEST_SUITE_P(Casos, CulpadoScript,
                         ::testing::Values(CasoCulpado{"Valor", {{10, "10"}}, "Valor", 0},
                                           CasoCulpado{"Favorecido", {{7, "2"}}, "Favorecido", 3},
                                           CasoCulpado{"Cidade", {{16, "61"}}, "Cidade", 4},
                                           CasoCulpado{"Dia", {{18, "45"}}, "Dia", 5},
                                           CasoCulpado{"Mes", {{19, "54"}}, "Mês", 6},
                                           CasoCulpado{"Ano", {{20, "64"}}, "Ano", 7},
                                           CasoCulpado{"Banco", {{5, "2"}, {13, "62"}}, "Banco", 8},
                                           CasoCulpado{"Numero", {{14, "70"}}, "Nº do Cheque", 10}),
                         [](const auto &info) { return std::string(info.param.Nome); });

// The screen opens on the layout's labels; OK copies every label back to its field.
TEST_F(AjusteScriptTeste, OkCopiesEveryLabelBackToItsField) {
    AjusteScript &a = abre_ajuste();
    EXPECT_EQ(a.Panel3D3.Caption, "001 - Padrao");
    EXPECT_EQ(a.Label3.Caption, "80 X 20");
    tecla(a, 9, 40, 2);  // comment to line 16
    tecla(a, 10, 39, 3); // number to column 5
    tecla(a, 4, 40);     // city, and the date with it, to line 11
    a.Clica("Command3D1", 0);
    EXPECT_TRUE(d.Mensagens.isEmpty());
    EXPECT_TRUE(a.Descarregada());
    QStringList esperado = LayoutPadrao;
    esperado[9] = "016";
    esperado[14] = "005";
    esperado[8] = "011";
    // Every value comes back through the labels' mask.
    for (int i = 2; i <= 20; ++i)
        esperado[i] = Format(esperado[i], "000");
    EXPECT_EQ(campos(), esperado);
}

TEST_F(AjusteScriptTeste, CancelLeavesTheRegisterUntouched) {
    AjusteScript &a = abre_ajuste();
    tecla(a, 0, 37, 5);
    a.Clica("Command3D1", 1);
    EXPECT_TRUE(a.Descarregada());
    EXPECT_EQ(campos(), LayoutPadrao);
}

// --- the copy

ChequeCopia cheque() {
    ChequeCopia c;
    c.Banco = "237";
    c.NomeBanco = "BRADESCO";
    c.Valor = "1.234,56";
    c.Favorecido = "José Antônio da Silva";
    c.Cidade = "São Paulo";
    c.Data = "05/02/99";
    c.Numero = "000123";
    c.Comentarios = {"Aluguel", QString(), QString()};
    return c;
}

class CmpCopiaTeste : public CopiaTeste {
  protected:
    CmpCopia &abre_copia(const ChequeCopia &c = cheque()) {
        Tela *t = d.Abre(std::make_unique<CmpCopia>(s, d, c));
        EXPECT_NE(t, nullptr);
        return *static_cast<CmpCopia *>(t);
    }
    void escolhe(CmpCopia &t, int indice) {
        t.Combo1.ListIndex = indice;
        t.Clica("Combo1");
    }
    QStringList tolvane() const {
        QStringList r;
        for (const auto &c : const_cast<CmpCopiaTeste *>(this)->imp().Registro())
            if (c.Operacao == "TolvaneTX") r << c.Argumentos.value(0);
        return r;
    }
};

TEST_F(CmpCopiaTeste, OpensOnTheLayoutLastChosenAndComposes) {
    grava_layout(LayoutPadrao);
    QStringList outro = outro_layout("002", "Outro");
    outro[2] = "3";
    grava_e_escolhe(outro);
    CmpCopia &t = abre_copia();
    EXPECT_EQ(t.Combo1.Itens, (QStringList{"Padrao", "Outro"}));
    EXPECT_EQ(t.Combo1.ListIndex, 1);
    EXPECT_EQ(t.LinhasCopia().value(2).trimmed(), "R$1.234,56");
    EXPECT_EQ(t.Caption, "Cópia do Cheque [01-001]");
    EXPECT_EQ(t.NomeArq.Caption, "cop2211.26");
    EXPECT_EQ(t.OpEnvio[1].Value, 1);
    EXPECT_EQ(t.CheckImpInv.Value, 1);
    EXPECT_EQ(t.CheckImpMai.Value, 0);

    escolhe(t, 0);
    EXPECT_EQ(opcao("Script"), "001");
    EXPECT_EQ(t.LinhasCopia().value(1).trimmed(),
              "Nº000123                                                  R$1.234,56");
    // The words come from the printer, split as on the cheque.
    EXPECT_EQ(t.LinhasCopia().value(4), QString(5, u' ') + extenso(123456));
}

// Without a layout the empty page says what it lacks and can't be sent; a page emptied by hand
// is refused at every target.
TEST_F(CmpCopiaTeste, WithoutALayoutTheScreenSaysWhatIsMissing) {
    CmpCopia &sem = abre_copia();
    EXPECT_EQ(sem.Info.Caption,
              "Não há layout de cópia cadastrado: cadastre um em Cadastro, Layout de Cópia.");
    sem.Unload();
    grava_layout(LayoutPadrao);
    CmpCopia &t = abre_copia();
    EXPECT_EQ(t.Info.Caption, "Escolha o layout da cópia em \"Layout / Script\".");
    EXPECT_TRUE(t.Info.Visible);
    EXPECT_FALSE(t.BtnCmd[0].Enabled);
    escolhe(t, 0);
    EXPECT_FALSE(t.Info.Visible);
    t.Muda(t.CopiaTxt, " \n ");
    for (int envio : {1, 2, 0}) {
        t.Clica("OpEnvio", envio);
        t.Clica("BtnCmd", 0);
    }
    EXPECT_EQ(d.Textos(), QStringList(3, "A cópia está vazia: não há o que enviar."));
    EXPECT_TRUE(tolvane().isEmpty());
    EXPECT_TRUE(d.Impressos.isEmpty());
}

// Out of the box each preset bank has a copy layout, and the copy of a cheque takes its bank's.
class CopiaDeFabrica : public CmpCopiaTeste {
  protected:
    CopiaDeFabrica() { layouts_de_fabrica = true; }
};

TEST_F(CopiaDeFabrica, TakesTheLayoutOfTheChequesBank) {
    CmpCopia &t = abre_copia();
    EXPECT_EQ(t.Combo1.ListCount(), bancos_padrao().size());
    EXPECT_EQ(t.Combo1.List(t.Combo1.ListIndex), "Bradesco");
    EXPECT_EQ(opcao("Script"), "237");
    EXPECT_TRUE(d.Mensagens.isEmpty());
    teste::confere_referencia(t.CopiaTxt.Text, "copia/de_fabrica.txt");
}

TEST_F(CmpCopiaTeste, ALayoutOutsideThePageIsReported) {
    QStringList fora = LayoutPadrao;
    fora[8] = "23";
    grava_e_escolhe(fora);
    CmpCopia &t = abre_copia();
    EXPECT_EQ(d.Textos(),
              QStringList{"Houve Problemas Ao Montar o Layout de Cheque!!\rFavor Revisar o "
                          "Layout de Cópia que foi Montado, ou Escolha Outro Layout"});
    // A run-time error of the copy, told as the other run-time errors: with no title.
    EXPECT_EQ(d.Mensagens.value(0).Titulo, "");
    EXPECT_EQ(t.CopiaTxt.Text, "");
}

// The entry screen opens the copy, by its command and by its menu item, only for a cheque
// that ValidaCheque lets through; the copy is made of what the entry screen holds.
struct CasoEntrada {
    const char *Nome;
    const char *Comando; // Opcoes(6), or the menu item
    QString Valor;
    QString NomeAoLado; // Label1(6)
    QString Mensagem;   // ValidaCheque's; empty for a good cheque
    QString LinhaBanco;
};

class CopiaDaEntrada : public CopiaTeste, public ::testing::WithParamInterface<CasoEntrada> {};

TEST_P(CopiaDaEntrada, OpensOnlyForAValidChequeAndComposesItsFields) {
    const CasoEntrada &caso = GetParam();
    grava_e_escolhe();
    auto *m = static_cast<Main *>(d.Abre(std::make_unique<Main>(s, d, QString())));
    const QStringList textos{"237", caso.Valor, "José", "Curitiba", "05/02/99", "", "000123"};
    for (int i = 0; i < 7; ++i)
        if (i != 5) m->Text1[i].Text = textos[i];
    // Off the bank field first, whose leave would put the table's name beside the code.
    m->SetFocus("CheckBox");
    m->Label1[6].Caption = caso.NomeAoLado;
    m->Text2[0].Text = "Aluguel";
    m->Text2[1].Text = "de janeiro";
    m->Text2[2].Text = "Sala 12";
    d.Mensagens.clear();
    if (QString(caso.Comando) == "Opcoes")
        m->Clica("Opcoes", 6);
    else
        m->Clica(caso.Comando);

    auto *copia = d.Tela_<CmpCopia>(telas::CmpCopia);
    if (!caso.Mensagem.isEmpty()) {
        ASSERT_EQ(d.Mensagens.size(), 1);
        EXPECT_EQ(d.Mensagens[0].Texto, caso.Mensagem);
        EXPECT_EQ(d.Mensagens[0].Titulo, "Vexa PLUS - Document Printer");
        EXPECT_FALSE(d.Abertas.contains(telas::CmpCopia));
        EXPECT_EQ(copia, nullptr);
        return;
    }
    EXPECT_TRUE(d.Mensagens.isEmpty()) << d.Textos().join('|').toStdString();
    ASSERT_NE(copia, nullptr);
    const QStringList linhas = copia->LinhasCopia();
    EXPECT_EQ(linhas.value(0), caso.LinhaBanco);
    EXPECT_EQ(linhas.value(1), "  Nº000123" + QString(50, u' ') + "R$1.234,56");
    EXPECT_EQ(linhas.mid(13, 3), (QStringList{"     Aluguel", "     de janeiro", "     Sala 12"}));
}

INSTANTIATE_TEST_SUITE_P(
    Casos, CopiaDaEntrada,
    ::testing::Values(
        CasoEntrada{"ComandoSemValor", "Opcoes", "", "", "O valor não pode ser vazio", {}},
        CasoEntrada{"MenuComValorZero",
                    "CopiaCheque",
                    "0,00",
                    "",
                    "O valor não pode ser igual a zero (0,00).",
                    {}},
        // The name beside the code is the one composed; without it, the bank table's.
        CasoEntrada{"ComandoComONomeAoLado", "Opcoes", "1.234,56", "NOME NA TELA", "",
                    "  237-NOME NA TELA"},
        CasoEntrada{"MenuComONomeDaTabela", "CopiaCheque", "1.234,56", "", "", "  237-Bradesco"}),
    [](const auto &info) { return std::string(info.param.Nome); });

TEST_F(CmpCopiaTeste, CapitalsOnTheSettingAndOnTheTick) {
    grava_e_escolhe();
    LeGravaIni(s.CaminhoIni, "Opcoes", "UsarImpMai", "1x");
    CmpCopia &t = abre_copia();
    EXPECT_EQ(t.CheckImpMai.Value, 1);
    EXPECT_TRUE(t.CopiaTxt.Text.contains("JOSÉ ANTÔNIO DA SILVA"));
    t.Clica("CheckImpMai");
    t.Muda(t.CopiaTxt, "minusculas");
    t.Clica("CheckImpMai");
    EXPECT_EQ(t.CopiaTxt.Text, "MINUSCULAS");
}

TEST_F(CmpCopiaTeste, TheCursorInTheTitleAndTheWarningOfLongLines) {
    CmpCopia &t = abre_copia();
    t.Muda(t.CopiaTxt, "abc\n" + QString(81, u'x') + "\n\n" + QString(90, u'y'));
    t.CopiaTxt_Cursor(6);
    EXPECT_EQ(t.Caption, "Cópia do Cheque [02-003]");
    EXPECT_EQ(t.Info.Caption,
              "\nLinha 2 Extrapola Tamanho Maximo!\nLinha 4 Extrapola Tamanho Maximo!");
    EXPECT_TRUE(t.Info.Visible);
    EXPECT_FALSE(t.BtnCmd[0].Enabled);
    t.Muda(t.CopiaTxt, "abc\n" + QString(80, u'x'));
    EXPECT_EQ(t.Caption, "Cópia do Cheque [02-003]");
    EXPECT_FALSE(t.Info.Visible);
    EXPECT_TRUE(t.BtnCmd[0].Enabled);
}

struct CasoEnvio {
    const char *Nome;
    int Invertida;
    int Maiusculas;
    QStringList Esperado;
};

class EnvioVexa : public CmpCopiaTeste, public ::testing::WithParamInterface<CasoEnvio> {};

TEST_P(EnvioVexa, LinesGoThroughTolvaneConverted) {
    CmpCopia &t = abre_copia();
    t.CheckImpInv.Value = GetParam().Invertida;
    t.CheckImpMai.Value = GetParam().Maiusculas;
    t.Muda(t.CopiaTxt, "São Paulo\n\nfim");
    imp().LimpaChamadas();
    t.Clica("BtnCmd", 0);
    // The sheet is asked for first, under the document's name.
    EXPECT_EQ(d.Textos(), QStringList{"Insira o Documento."});
    EXPECT_EQ(d.Mensagens.value(0).Titulo, "Cópia do Cheque");
    const QStringList chamadas = imp().Chamadas();
    ASSERT_GE(chamadas.size(), 4);
    EXPECT_EQ(chamadas[0], "IniciaPorta(COM2)");
    EXPECT_EQ(chamadas[1], "TravaDoc(1)");
    EXPECT_EQ(chamadas[2], "FormataTX(|3|0|0|0|0)");
    EXPECT_EQ(chamadas.mid(chamadas.size() - 2), (QStringList{"TravaDoc(0)", "FechaPorta()"}));
    EXPECT_EQ(tolvane(), GetParam().Esperado);
}

const QString Esc = QStringLiteral("\x1B") + "I";
INSTANTIATE_TEST_SUITE_P(
    Casos, EnvioVexa,
    ::testing::Values(
        CasoEnvio{"Normal", 0, 0, {ConverteTexto("São Paulo") + "\r\n", "\r\n", "fim\r\n"}},
        // Inverted, the last line comes out first, between two ESC "I".
        CasoEnvio{
            "Invertida", 1, 0, {Esc, "fim\r\n", "\r\n", ConverteTexto("São Paulo") + "\r\n", Esc}},
        CasoEnvio{"Maiusculas", 0, 1, {ConverteTexto("SÃO PAULO") + "\r\n", "\r\n", "FIM\r\n"}}),
    [](const auto &info) { return std::string(info.param.Nome); });

// The lines of the page, what the printer lacks ("porta": its port doesn't open; "papel": it
// has no paper), the answer to "Insira o Documento."; the messages, and whether lines went.
struct CasoFalhaEnvio {
    const char *Nome;
    int Linhas;
    const char *Falta;
    QStringList Mensagens;
    bool Enviou;
    Resposta Papel = Resposta::OK;
};

const QString Papel = QStringLiteral("Insira o Documento.");

class FalhaEnvioVexa : public CmpCopiaTeste,
                       public ::testing::WithParamInterface<CasoFalhaEnvio> {};

TEST_P(FalhaEnvioVexa, IsToldWithItsWords) {
    const CasoFalhaEnvio &c = GetParam();
    CmpCopia &t = abre_copia();
    t.Muda(t.CopiaTxt, QStringList(c.Linhas, "linha").join('\n'));
    if (QString(c.Falta) == "porta") imp().Falha("IniciaPorta", 0);
    if (QString(c.Falta) == "papel") imp().DefinePapel(false);
    imp().LimpaChamadas();
    d.Respostas = {c.Papel};
    t.Clica("BtnCmd", 0);
    EXPECT_EQ(d.Textos(), c.Mensagens);
    EXPECT_EQ(!tolvane().isEmpty(), c.Enviou);
}

using E = CasoFalhaEnvio;
INSTANTIATE_TEST_SUITE_P(
    Casos, FalhaEnvioVexa,
    ::testing::Values(
        E{"QuarentaLinhasCabem", 40, "", {Papel}, true},
        E{"QuarentaEUmaLinhas",
          41,
          "",
          {"O numero de linhas ultrapassa a capacidade da impressora!"},
          false},
        E{"PapelCancelado", 3, "", {Papel}, false, Resposta::Cancel},
        E{"PortaFechada",
          3,
          "porta",
          {Papel, "Problemas na abertura da porta de comunicacao"},
          false},
        E{"SemPapel", 3, "papel", {Papel, "Problemas na Transmissao da copia"}, true}),
    [](const auto &info) { return std::string(info.param.Nome); });

TEST_F(CmpCopiaTeste, TheFileOfTheDayTakesEachPageQuotedAndAppended) {
    CmpCopia &t = abre_copia();
    t.Clica("OpEnvio", 0);
    t.Muda(t.CopiaTxt, "São Paulo\n\nfim");
    t.Clica("BtnCmd", 0);
    t.Muda(t.CopiaTxt, "outra");
    t.Clica("BtnCmd", 0);
    QFile f(s.CaminhoApp + "/cop2211.26");
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(f.readAll(), QByteArray("\"S\xE3o Paulo\r\n\r\nfim\"\r\n\"outra\"\r\n"));
    EXPECT_TRUE(imp().Chamadas().isEmpty());

    // The purge reads the same name: thirty-one days later the file is past the period of 30
    // and goes.
    fixa_hoje(QDate(2026, 12, 23));
    s.DefineHoje();
    s.PeriodoCop = 30;
    d.Respostas = {Resposta::Yes};
    ExpurgaCopias(s, d);
    EXPECT_EQ(d.Mensagens.size(), 1);
    EXPECT_FALSE(QFile::exists(f.fileName()));
}

TEST_F(CmpCopiaTeste, TheSystemPrinterGetsThePageAtSize12) {
    CmpCopia &t = abre_copia();
    t.Clica("OpEnvio", 2);
    t.Muda(t.CopiaTxt, "um\n\ntres");
    t.Clica("BtnCmd", 0);
    ASSERT_EQ(d.Impressos.size(), 1);
    EXPECT_EQ(d.Impressos[0].TamanhoFonte, 12);
    EXPECT_EQ(d.Impressos[0].Paginas, (QList<QStringList>{{"um", "", "tres"}}));
    EXPECT_TRUE(d.Mensagens.isEmpty());

    d.ErroImpressao = 482;
    t.Clica("BtnCmd", 0);
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_TRUE(d.Mensagens[0].Texto.startsWith("Ocorreu erro 482! Possiveis Causas:\n"));
    d.ErroImpressao = 32755;
    t.Clica("BtnCmd", 0);
    EXPECT_EQ(d.Mensagens.size(), 1);
}

TEST_F(CmpCopiaTeste, ClosingWritesOnlyTheOptionsThatChanged) {
    LeGravaIni(s.CaminhoIni, "Opcoes", "UsarImpMai", "1");
    CmpCopia &t = abre_copia();
    EXPECT_EQ(opcao("EnvioCopia"), "-2");
    t.Clica("OpEnvio", 2);
    t.Clica("CheckImpInv");
    t.Clica("BtnCmd", 1);
    EXPECT_EQ(opcao("EnvioCopia"), "2");
    EXPECT_EQ(opcao("UsarImpInv"), "0");
    EXPECT_EQ(opcao("UsarImpMai"), "1");
    EXPECT_EQ(s.UsaInvertida, 0);

    CmpCopia &de_novo = abre_copia();
    EXPECT_EQ(de_novo.OpEnvio[2].Value, 1);
    EXPECT_EQ(de_novo.OpEnvio[1].Value, 0);
    EXPECT_EQ(de_novo.CheckImpInv.Value, 0);
}

} // namespace

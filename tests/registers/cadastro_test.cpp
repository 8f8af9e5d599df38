#include "catalogo/telas.h"
#include "core/conversoes.h"
#include "registers/cidade.h"
#include "registers/favorec.h"
#include "registers/pesquisa.h"
#include "registers/registros_apoio.h"

using namespace vexa;

namespace {

using CadastroTeste = teste::Registros;

// What the payee and city registers share, run on both.
struct CasoRegistro {
    const char *nome;
    std::function<std::unique_ptr<CadastroSimples>(Sessao &, Desktop &)> cria;
    int tabela;
    int tamanho;
    QString semSelecao;
};

class CadastrosSimples : public teste::Registros,
                         public ::testing::WithParamInterface<CasoRegistro> {
  protected:
    CadastroSimples &abre_registro() {
        return *static_cast<CadastroSimples *>(d.Abre(GetParam().cria(s, d)));
    }
};

TEST_P(CadastrosSimples, IncluirAlterarExcluir) {
    CadastroSimples &t = abre_registro();
    d.Respostas = {Resposta::No};
    digita(t, "Text1", 0, "12");
    EXPECT_EQ(t.Text1[0].Text, "00012");
    const QString nome = QString("Nome ") + QString(GetParam().tamanho, 'x');
    t.Digita("Text1", 1, nome);
    EXPECT_EQ(t.Text1[1].Text.size(), GetParam().tamanho);
    t.Clica("Command3D1", 0);
    const QString guardado = nome.left(GetParam().tamanho);
    EXPECT_EQ(linhas(GetParam().tabela), QStringList({"00012|" + guardado}));
    EXPECT_EQ(t.List1.Itens, QStringList({"00012 - " + guardado}));
    EXPECT_EQ(t.Text1[0].Text, "");

    // A name of the longest size comes back whole from the list.
    t.List1.ListIndex = 0;
    t.Dispara({"List1", -1}, Evento::Click);
    EXPECT_EQ(t.Text1[1].Text, guardado);
    EXPECT_FALSE(t.Text1[0].Enabled);
    t.Muda(t.Text1[1], "Outro");
    d.Respostas = {Resposta::No};
    t.Clica("Command3D1", 1);
    EXPECT_EQ(linhas(GetParam().tabela), QStringList({"00012|Outro"}));
    EXPECT_EQ(t.List1.ListIndex, -1);

    t.List1.ListIndex = 0;
    t.Dispara({"List1", -1}, Evento::Click);
    d.Respostas = {Resposta::No};
    t.Clica("Command3D1", 2);
    EXPECT_TRUE(linhas(GetParam().tabela).isEmpty());
    EXPECT_TRUE(t.List1.Itens.isEmpty());
}

TEST_P(CadastrosSimples, VerificaCamposESelecao) {
    CadastroSimples &t = abre_registro();
    inclui(GetParam().tabela, {{"00001", "Primeiro"}});
    d.Respostas = {Resposta::No, Resposta::No, Resposta::No, Resposta::No};
    digita(t, "Text1", 0, "1");
    t.Clica("Command3D1", 0);
    EXPECT_EQ(d.Textos().last(), "Campo Inválido...");
    EXPECT_EQ(t.Foco(), (RefControle{"Text1", 1}));
    digita(t, "Text1", 1, "Repetido");
    t.Clica("Command3D1", 0);
    EXPECT_EQ(d.Textos().last(), "Codigo ja cadastrado...");
    t.Command3D1[1].Enabled = true;
    t.Command3D1[2].Enabled = true;
    t.Clica("Command3D1", 1);
    EXPECT_EQ(d.Textos().last(), GetParam().semSelecao);
    EXPECT_EQ(d.Mensagens.last().Titulo, "Erro");
    EXPECT_EQ(d.Mensagens.last().Icone_, Icone::Exclamacao);
    digita(t, "Text1", 0, "2");
    t.Text1[1].Text = "Ninguem";
    t.Command3D1[2].Enabled = true;
    t.Clica("Command3D1", 2);
    EXPECT_EQ(d.Textos().last(), "Codigo nao encontrado...");
    EXPECT_EQ(linhas(GetParam().tabela), QStringList({"00001|Primeiro"}));
}

INSTANTIATE_TEST_SUITE_P(Registros, CadastrosSimples,
                         ::testing::Values(CasoRegistro{"Favorecidos",
                                                        [](Sessao &s, Desktop &d) {
                                                            return std::make_unique<Favorec>(s, d);
                                                        },
                                                        TabFavorecido, 74,
                                                        "Selecione um favorecido..."},
                                           CasoRegistro{"Cidades",
                                                        [](Sessao &s, Desktop &d) {
                                                            return std::make_unique<Cidade>(s, d);
                                                        },
                                                        TabCidade, 20, "Selecione uma Cidade..."}),
                         [](const auto &info) { return std::string(info.param.nome); });

TEST_F(CadastroTeste, FavorecidoVaiParaAImpressoraPelosDoisUltimosDigitos) {
    auto &f = abre<Favorec>();
    digita(f, "Text1", 0, "12345");
    digita(f, "Text1", 1, "  José Conceição ");
    f.Clica("Command3D1", 0);
    EXPECT_EQ(d.Textos(), QStringList({"Deseja Incluir na Impressora?"}));
    EXPECT_EQ(d.Mensagens[0].Titulo, "Comando Vexa");
    EXPECT_EQ(d.Mensagens[0].Botoes_, Botoes::YesNo);
    EXPECT_EQ(d.Mensagens[0].Icone_, Icone::Nenhum);
    EXPECT_EQ(imp().Chamadas(),
              QStringList({"IniciaPorta(COM2)",
                           "IncluiFavorecido(45|" + ConverteTexto("José Conceição") + ")",
                           "FechaPorta()"}));
    EXPECT_EQ(linhas(TabFavorecido), QStringList({"12345|  José Conceição "}));
}

TEST_F(CadastroTeste, ExcluirNaImpressoraMesmoQuandoOBancoRecusa) {
    auto &f = abre<Favorec>();
    digita(f, "Text1", 0, "777");
    digita(f, "Text1", 1, "Ninguém");
    f.Command3D1[2].Enabled = true;
    f.Clica("Command3D1", 2);
    EXPECT_EQ(d.Textos(),
              QStringList({"Deseja Excluir na Impressora?", "Codigo nao encontrado..."}));
    EXPECT_EQ(imp().Chamadas(),
              QStringList({"IniciaPorta(COM2)", "ExcluiFavorecido(77)", "FechaPorta()"}));
}

TEST_F(CadastroTeste, IncluirComFavorecidoCarregadoPerguntaELimpa) {
    inclui(TabFavorecido, {{"00031", "Maria"}});
    auto &f = abre<Favorec>();
    f.List1.ListIndex = 0;
    f.Dispara({"List1", -1}, Evento::Click);
    ASSERT_EQ(f.Text1[1].Text, "Maria");
    f.Clica("Command3D1", 0);
    // The question comes before the screen is cleared, and Yes sends the payee on it.
    EXPECT_EQ(d.Textos(), QStringList({"Deseja Incluir na Impressora?"}));
    EXPECT_EQ(imp().Chamadas(),
              QStringList({"IniciaPorta(COM2)", "IncluiFavorecido(31|Maria)", "FechaPorta()"}));
    EXPECT_EQ(f.Text1[0].Text, "");
    EXPECT_EQ(f.Text1[1].Text, "");
    EXPECT_TRUE(f.Text1[0].Enabled);
    EXPECT_FALSE(f.Command3D1[1].Enabled);
    EXPECT_EQ(f.Foco(), (RefControle{"Text1", 0}));
    EXPECT_EQ(linhas(TabFavorecido), QStringList({"00031|Maria"}));
}

TEST_F(CadastroTeste, CidadeNaoPerguntaPelaImpressora) {
    auto &c = abre<Cidade>();
    digita(c, "Text1", 0, "1");
    digita(c, "Text1", 1, "Curitiba");
    c.Clica("Command3D1", 0);
    EXPECT_TRUE(d.Mensagens.isEmpty());
    EXPECT_TRUE(imp().Chamadas().isEmpty());
    EXPECT_EQ(linhas(TabCidade), QStringList({"00001|Curitiba"}));
}

// --- the search window

class PesquisaTeste : public teste::Registros {
  protected:
    void SetUp() override {
        Registros::SetUp();
        inclui(TabFavorecido, {{"00001", "Ana"}, {"00002", "Bruno"}, {"00010", "Alice"}});
        inclui(TabCidade, {{"00007", "Curitiba"}});
    }
    Pesquisa *pesquisa(int tipo) {
        s.TipoPesquisa = tipo;
        s.ResultadoPesquisa = "antigo";
        return static_cast<Pesquisa *>(abre_tela(s, d, std::make_unique<Pesquisa>(s, d)));
    }
};

TEST_F(PesquisaTeste, EstreitaPorCodigoOuNomeEDevolveONome) {
    Pesquisa *p = pesquisa(0);
    ASSERT_NE(p, nullptr);
    EXPECT_EQ(s.ResultadoPesquisa, "");
    EXPECT_EQ(p->List1.ListCount(), 3);
    p->Digita("Text1", 0, "00");
    EXPECT_EQ(p->List1.Itens, QStringList({"00001 - Ana", "00002 - Bruno", "00010 - Alice"}));
    p->Digita("Text1", 0, "A");
    EXPECT_EQ(p->List1.Itens, QStringList({"00010 - Alice", "00001 - Ana"}));
    p->List1.ListIndex = 1;
    p->Dispara({"List1", -1}, Evento::DblClick);
    EXPECT_EQ(s.ResultadoPesquisa, "Ana");
    EXPECT_TRUE(p->Descarregada());
}

TEST_F(PesquisaTeste, BancoDevolveOCodigoECancelarNada) {
    Pesquisa *p = pesquisa(2);
    p->Digita("Text1", 0, "Bradesco");
    ASSERT_EQ(p->List1.Itens, QStringList({"237 - Bradesco"}));
    p->List1.ListIndex = 0;
    p->Clica("Command3D1", 0);
    EXPECT_EQ(s.ResultadoPesquisa, "237");

    p = pesquisa(1);
    ASSERT_TRUE(Conjunto(s, TabCidade).Aberto());
    p->List1.ListIndex = 0;
    p->Clica("Command3D1", 1);
    EXPECT_EQ(s.ResultadoPesquisa, "");
    EXPECT_TRUE(p->Descarregada());
    // Closing the window closes its table's record set.
    EXPECT_FALSE(Conjunto(s, TabCidade).Aberto());

    p = pesquisa(1);
    p->Clica("Command3D1", 2);
    EXPECT_NE(d.Aberta("Cidade"), nullptr);
    EXPECT_TRUE(p->Descarregada());
}

TEST_F(PesquisaTeste, RegistroVazioOfereceOCadastro) {
    ExisteCodigo(s, "", TabCidade);
    Conjunto(s, TabCidade).Delete();
    d.Respostas = {Resposta::OK};
    EXPECT_EQ(pesquisa(1), nullptr);
    ASSERT_EQ(d.Textos(), QStringList({"Nao existe registro para pesquisar!!!\r"
                                       "Deseja cadastrar algum dado?"}));
    EXPECT_EQ(d.Mensagens[0].Botoes_, Botoes::OKCancel);
    EXPECT_EQ(d.Mensagens[0].Titulo, "");
    EXPECT_EQ(d.Mensagens[0].Icone_, Icone::Nenhum);
    EXPECT_NE(d.Aberta("Cidade"), nullptr);
    EXPECT_EQ(d.Aberta("Pesquisa"), nullptr);

    d.Respostas = {Resposta::Cancel};
    EXPECT_EQ(pesquisa(1), nullptr);
    EXPECT_EQ(d.Abertas.count("Cidade"), 1);
}

// Every button of these screens answers to Alt and a letter of its own; on the screens whose
// options and boxes are reached by the keyboard too, so are those.
struct CasoTeclas {
    QString tela;
    bool opcoes = false;
};

class TeclasDeAcesso : public teste::Registros, public ::testing::WithParamInterface<CasoTeclas> {};

TEST_P(TeclasDeAcesso, UmaLetraSoDeCadaBotao) {
    const std::unique_ptr<Tela> t = cria_tela(GetParam().tela, s, d);
    ASSERT_NE(t, nullptr);
    QStringList letras;
    for (const auto &[ref, c] : t->controles()) {
        const bool opcao = c->Tipo == TipoControle::Opcao || c->Tipo == TipoControle::Caixa;
        if (c->Tipo != TipoControle::Botao && !(opcao && GetParam().opcoes)) continue;
        const qsizetype e = c->Caption.indexOf(u'&');
        ASSERT_TRUE(e >= 0 && e + 1 < c->Caption.size()) << ref.texto().toStdString();
        const QString letra = c->Caption.mid(e + 1, 1).toLower();
        EXPECT_FALSE(letras.contains(letra)) << ref.texto().toStdString();
        letras << letra;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Telas, TeclasDeAcesso,
    ::testing::Values(CasoTeclas{telas::Main}, CasoTeclas{telas::ChePrz},
                      CasoTeclas{telas::CmpExtra}, CasoTeclas{telas::ChequeTransf},
                      CasoTeclas{telas::Bancos}, CasoTeclas{telas::BancTrans},
                      CasoTeclas{telas::Favorec}, CasoTeclas{telas::Cidade},
                      CasoTeclas{telas::Pesquisa}, CasoTeclas{telas::Saida},
                      CasoTeclas{telas::Ajusta}, CasoTeclas{telas::AjustaChequeTransferencia},
                      CasoTeclas{telas::Script}, CasoTeclas{telas::AjusteScript},
                      CasoTeclas{telas::CmpCopia}, CasoTeclas{telas::Relato, true},
                      CasoTeclas{telas::Filtro, true}, CasoTeclas{telas::ExcluiRel, true},
                      CasoTeclas{telas::Configura, true}, CasoTeclas{telas::OpSoft, true}),
    [](const auto &info) { return info.param.tela.toStdString(); });

} // namespace

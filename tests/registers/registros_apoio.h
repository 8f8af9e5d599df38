#pragma once
// A data folder with its database and the simulated printer, a scripted desktop, and the
// hands of an operator on a register screen.
#include "apoio/referencia.h"
#include "core/desktop_roteiro.h"
#include "core/inicio.h"
#include "core/relogio.h"
#include "core/sessao.h"
#include "printer/simulador.h"
#include "store/pasta_dados.h"
#include "store/tabelas.h"

#include <QFile>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace vexa::teste {

class Registros : public ::testing::Test {
  protected:
    void SetUp() override {
        fixa_hoje(QDate(2026, 11, 22));
        s.DefineHoje();
        prepara_pasta_dados(s);
        if (!layouts_de_fabrica) tira_layouts_de_fabrica();
        s.PortaImpressora = "COM2";
        s.Impressora = std::make_unique<Simulador>(s.CaminhoApp);
        imp().LimpaChamadas();
    }
    void TearDown() override { fixa_hoje(QDate()); }

    // The folder as an office that registers its own transfer and copy layouts starts it.
    void tira_layouts_de_fabrica() {
        ASSERT_NE(AbreTabelas(s, d, 0, 0, 0, 0), -2);
        QSqlQuery q(s.Banco->db());
        ASSERT_TRUE(q.exec("DELETE FROM Script") && q.exec("DELETE FROM Transferencia"));
        // Closed again, so that each test opens the database as a screen would.
        q.finish();
        s.Banco.reset();
        QFile ini(s.CaminhoIni);
        ASSERT_TRUE(ini.open(QIODevice::WriteOnly));
        ini.write("[Config]\r\nFirstTime=1\r\n");
        ini.close();
        QFile::remove(s.CaminhoApp + "/ChequeTransf.txt");
    }

    Simulador &imp() { return static_cast<Simulador &>(*s.Impressora); }

    template <class T> T &abre() {
        Tela *t = d.Abre(std::make_unique<T>(s, d));
        EXPECT_NE(t, nullptr);
        return *static_cast<T *>(t);
    }
    // Types into a field and leaves it with Enter, as the operator does.
    static void digita(Tela &t, const QString &nome, int i, const QString &texto) {
        t.SetFocus(nome, i);
        t.Digita(nome, i, texto);
        t.Tecla(13);
    }
    // Rows added straight to a table.
    void inclui(int tabela, const QList<QPair<QString, QString>> &linhas) {
        ASSERT_NE(AbreTabelas(s, d, 0, 0, 0, 0), -2);
        ExisteCodigo(s, "", tabela);
        RecordSet &rs = Conjunto(s, tabela);
        for (const auto &[codigo, nome] : linhas) {
            rs.AddNew();
            rs.Define("Codigo", codigo);
            rs.Define("Nome", nome);
            ASSERT_TRUE(rs.Update());
        }
    }
    // A table's rows as "code|name", by code.
    QStringList linhas(int tabela, const QStringList &campos = {"Codigo", "Nome"}) {
        QStringList r;
        ExisteCodigo(s, "", tabela);
        RecordSet &rs = Conjunto(s, tabela);
        for (rs.MoveFirst(); !rs.Eof(); rs.MoveNext()) {
            QStringList v;
            for (const QString &c : campos)
                v << rs.Campo(c);
            r << v.join('|');
        }
        r.sort();
        return r;
    }

    // The labels of a graphic adjust, in order.
    template <class Ajuste> static QStringList rotulos(const Ajuste &a) {
        QStringList r;
        for (const auto &[i, l] : a.Label2)
            r << l.Caption;
        return r;
    }
    // Presses a key on a box of a graphic adjust n times; the adjust spends each.
    static void tecla(Tela &a, int caixa, int codigo, int vezes = 1) {
        a.SetFocus("Text1", caixa);
        for (int i = 0; i < vezes; ++i)
            EXPECT_EQ(a.Tecla(codigo), 0);
    }
    enum Seta { Esquerda = 37, Acima = 38, Direita = 39, Abaixo = 40 };

    // Set by a test's constructor to keep the preset banks' transfer and copy layouts.
    bool layouts_de_fabrica = false;
    QTemporaryDir pasta;
    Sessao s{pasta.path()};
    DesktopRoteiro d;
};

} // namespace vexa::teste

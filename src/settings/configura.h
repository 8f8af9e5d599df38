#pragma once
// "Configurações": the printer's port, the currency's names kept in the printer, the payees in
// the printer's own memory, and its self-test page. Each panel acts at once on the printer and
// the settings.
#include "core/tela.h"

namespace vexa {

// The self-test page, as sent to the printer.
QString pagina_auto_teste(const QString &Porta, const QString &TelefoneSuporte);

class Configura : public Tela {
  public:
    Configura(Sessao &sessao, Desktop &desktop);

    Quadro Frame1{"Porta"};
    Rotulo Label1{"Porta de Comunicação:"};
    Combo cboPorta;
    Botao Command3D7{"Atua&lizar"};

    Quadro Frame2{"Moeda"};
    Matriz<Rotulo> Label2{"Moeda Singular:", "Moeda Plural:"};
    Matriz<Texto> Text1{{0, Texto()}, {1, Texto()}};
    Botao Command3D1{"&Atualizar"};

    Quadro Frame3{"Cadastro de Favorecidos na Impressora"};
    Matriz<Rotulo> Label3{"Código:", "Favorecido:"};
    Matriz<Texto> Text2{{0, Texto()}, {1, Texto()}};
    Botao Command3D2{"A&tualizar"};

    Quadro Frame4{"Exclusão de Favorecidos da Impressora"};
    Rotulo Label4{"Código:"};
    Texto Text3;
    Opcao Option3D2{"To&dos"};
    Botao Command3D4{"At&ualizar"};

    Quadro Frame5{"Auto-Teste"};
    Botao Command3D9{"Aut&o-Teste"};
    // The cheques on a printer of the system instead, and its calibration.
    Botao Command3D10{"Impressora do &Sistema..."};
    Botao SSCommand1{"Sai&r"};

    void Form_Load() override;
    void Command3D7_Click();
    void Command3D1_Click();
    void Command3D2_Click();
    void Command3D4_Click();
    void Command3D9_Click();
    void Option3D2_Click();
    // Past its limit a field is cut back to it, with the size message.
    void Campo_Change(Texto &campo, int limite);
    void Codigo_LostFocus(Texto &campo);
    void Campo_GotFocus(Texto &campo);
    // Enter goes on to the next control, as Tab does.
    void Campo_KeyDown(int &KeyCode);

  private:
    void recusa(const QString &mensagem, const QString &titulo, Texto &campo);
    QStringList ordem_;
};

} // namespace vexa

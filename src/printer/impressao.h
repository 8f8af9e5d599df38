#pragma once
// The print procedures the screens share: the commands that keep the printer's memory in
// step with the database, the sending of free text, the extra fields of a cheque, the
// date-format command, the amount in words and the entry screen's gauge.
//
// The gauge they sweep is the entry screen's, which it lends to the session (Sessao::Gauge1).
//
// Each procedure opens the port for its one operation and closes it again, with two
// exceptions: ImprimeCamposExtras hands its fields over with the port closed, and a text
// the printer refuses leaves the port as it is (no TravaDoc(0), no FechaPorta).
#include "core/desktop.h"
#include "core/sessao.h"
#include "core/tela.h"
#include "printer/vexa32.h"

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>

namespace vexa {

// What a register command sends: a code and a text (the layout's positions, the payee's
// name, or for the currency the singular and the plural), and for a layout the check of its
// positions, run with the port open.
struct PedidoImpressora {
    QString Codigo;
    QString Texto;
    std::function<bool()> Verifica;
};

// Operacao 0: the layout (IncluiBanco), after p.Verifica; 1: IncluiFavorecido;
// 2: ExcluiFavorecido. Texts go as given. Returns 1, or 0 when the check failed (the port is
// then only closed).
qint16 ComandoImpressora(Sessao &s, Desktop &d, qint16 Operacao, const PedidoImpressora &p);

// The configuration screen's twin, with its own messages: 1 IncluiFavorecido(p.Codigo,
// p.Texto) with the name already converted by the caller; 2 ExcluiFavorecido(p.Codigo);
// 3 the currency: p.Codigo singular and p.Texto plural are stored as m_sg and m_pl of section
// Sistema and sent converted to the printer by AlteraMoeda.
void Qorn_CMD(Sessao &s, Desktop &d, qint16 Operacao, const PedidoImpressora &p);

// The year's digits on a cheque (1, 2 or 4): ESC AF "D" digit CR to the printer, and the
// choice kept as ConfiguraData of section Opcoes.
void envia_formato_data(Sessao &s, int Digitos);
// The command envia_formato_data sends, as the text whose Windows-1252 bytes are 1B AF 44 d 0D.
QString comando_formato_data(int Digitos);

// Free text to the cheque printer, converted to the printer's characters: lists, the
// self-test page, the back of a cheque. Modo as FormataTX takes it. False after the message of
// a port that didn't open or a text the printer refused: a list sends no more pages then.
bool EnviaTextoImpressora(Sessao &s, Desktop &d, const QString &Texto, qint16 Modo);

// The extra fields (TxtCpo: the three texts) checked against their stored positions and
// handed to the printer, unconverted, for the cheque that follows. 1, or -4 after a message.
qint16 ImprimeCamposExtras(Sessao &s, Desktop &d, const QStringList &TxtCpo);

// The six texts of ImprimeCheque. Payee and city go as the screen holds them: the print turns
// them into the printer's characters, and an empty one into one blank. Extra is empty for a
// single cheque; an instalment repeats its amount there.
struct TextosCheque {
    QString Banco, Valor, Favorecido, Cidade, Data, Extra;
};

// What a result of ImprimeCheque other than 1 means, and what the operator does about it: the
// port (2) is the cable and the port in the settings; no paper (4) is to put the cheque in.
QString causa_erro_cheque(const Sessao &s, qint16 Codigo);

// One cheque between IniciaPorta and FechaPorta, with the gauge's sweep ahead of it (no gauge:
// none). Returns the result of ImprimeCheque: 1 printed; any other, -1 included, is shown as
// "Problemas com a impressão do cheque." with the cause in words (causa_erro_cheque) and the code
// in the title. The single cheque doesn't
// look at the port: the cheque's own code tells the failure. With TestaPorta a port that doesn't
// open stops the print with its own message, and there is no result; nor is there without a
// printer.
//
// On a system printer the job the spooler took is not yet a cheque on paper: the operator is
// asked whether it came out right, and a No gives, in Nota, the note its row of Log carries as
// a cancelled cheque. Without Nota nobody registers the cheque, and nothing is asked.
std::optional<qint16> imprime_um_cheque(Sessao &s, Desktop &d, Medidor *Gauge,
                                        const TextosCheque &Textos, bool TestaPorta = false,
                                        QString *Nota = nullptr);
inline const QString PerguntaChequeSaiu =
    QStringLiteral("O cheque saiu certo na impressora?\n\nResponda Não se ele saiu torto, "
                   "manchado ou incompleto: ele fica no relatório como cancelado.");
inline const QString NotaChequeErrado =
    QStringLiteral("folha inutilizada (saiu errado na impressora)");

// The short colour sweep of a gauge ahead of a print; a zero Ligado puts it back to rest.
void AnimaGauge(Medidor &Gauge, qint16 Ligado);

// The amount in words, made by the printer and read back from Extenso.ret into
// s.ValorExtenso. The words keep the zero byte that ends them in the file, so that every
// reader gets them whole: the one that drops the last character, and QuebraExtenso, which
// stops at the zero.
void MontaExtenso(Sessao &s, Desktop &d, const QString &Valor);

// The printer the settings choose: Impressora of section Sistema, "Simulador" (written there
// when missing), "Nativo" or "Sistema" (a printer of the system). Any other value gets the
// simulator.
std::unique_ptr<Vexa32> cria_impressora(Sessao &s);

} // namespace vexa

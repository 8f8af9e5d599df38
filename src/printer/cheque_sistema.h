#pragma once
// A cheque on any printer the system knows, at true scale: where each line and column of a
// bank's layout falls on the 175 x 80 mm cheque, where the cheque sits on the sheet, and the
// calibration of each printer. Everything here is in millimetres and without graphics: the
// pages it composes are painted by whoever installed the painter (impressora_sistema.h), on
// paper, into a PDF or on the screen, from the same page.
#include "printer/face_cheque.h"
#include "printer/papel.h"

#include <QList>
#include <QRectF>
#include <QString>
#include <QStringList>

namespace vexa {

// The standard Brazilian cheque, and the magnetic band along its bottom edge where nothing
// may be printed.
constexpr double LarguraCheque = 175.0;
constexpr double AlturaCheque = 80.0;
constexpr double FaixaMagnetica = 16.0;
constexpr double LimiteImpressao = AlturaCheque - FaixaMagnetica;
constexpr double LarguraA4 = 210.0, AlturaA4 = 297.0;

// What a printer needs corrected, read off the calibration page laid over a real cheque:
// the shift of everything, and the stretch of its lengths (1 = none).
struct Calibracao {
    double DeslocX = 0, DeslocY = 0;
    double EscalaX = 1, EscalaY = 1;
};

// Where the cheque is fed: a cheque-size sheet in the manual feed, or an A4 carrier with the
// cheque's top left corner at (FolhaX, FolhaY).
enum class Folha { Cheque, A4 };

struct ConfiguracaoSistema {
    QString Impressora; // the system printer's name; empty: the system's default printer
    Folha TipoFolha = Folha::Cheque;
    double FolhaX = 17.5, FolhaY = 20.0;
    // The grid on the cheque: the left edge of column 1, the baseline of line 1, and the pitch
    // of a column and of a line. The defaults put the 120 x 20 grid above the magnetic band.
    double OrigemX = 3.0, OrigemY = 6.0;
    double PassoColuna = 1.4, PassoLinha = 3.0;
    Calibracao Ajuste;
    // The face on the screen before each cheque prints (Previa=0 in section ChequeSistema: no).
    bool Previa = true;
};

// A text on a page: the left end of its baseline, in millimetres of the sheet.
struct EscritoPagina {
    double X = 0, Y = 0;
    QString Texto;
};
struct TracoPagina {
    double X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;
};

// One sheet as the printer gets it: every text in one monospaced font whose characters are
// Passo millimetres apart, stretched by the calibration; the lines of rulers and marks.
// Cheque is where the cheque lies on the sheet: a preview shows its outline; paper never does.
struct PaginaSistema {
    double Largura = LarguraCheque, Altura = AlturaCheque;
    double Passo = 1.4;
    double EscalaX = 1, EscalaY = 1;
    QRectF Cheque;
    QList<EscritoPagina> Escritos;
    QList<TracoPagina> Tracos;
};

// The settings of the system printer from VEXA.INI: the printer's name under ImpressoraSistema
// of section Sistema, the sheet and the grid in section ChequeSistema, and the calibration of
// that printer under its name in section Calibracao. Missing or unreadable values keep their
// defaults.
ConfiguracaoSistema le_configuracao_sistema(const QString &CaminhoIni);
// The calibration of one printer as it is kept: "DeslocX;DeslocY;EscalaX;EscalaY".
QString texto_calibracao(const Calibracao &c);
Calibracao calibracao_do_texto(const QString &texto);
// The key a printer's calibration is kept under: its name without what a key can't hold.
QString chave_calibracao(const QString &impressora);

// A point of the cheque (millimetres from its top left corner) on the sheet, calibrated.
double folha_x(const ConfiguracaoSistema &c, double x);
double folha_y(const ConfiguracaoSistema &c, double y);

// The face of a cheque from its fields (campos_face). A field whose letters would reach into
// the magnetic band, or above the cheque, is not composed: its name comes back in Recusado
// and there is no page.
struct FaceSistema {
    PaginaSistema Pagina;
    QString Recusado;
    int LinhaRecusada = 0;
};
FaceSistema compoe_face_sistema(const ConfiguracaoSistema &c, const QList<CampoFace> &campos);

// Running text (lists, the back of a cheque, copies) in pages: on the cheque's grid for a
// cheque form, or on a plain page, A4 or the cheque-size sheet the feed holds. A wider line
// makes the letters smaller, so that nothing is cut.
QList<PaginaSistema> paginas_texto_sistema(const ConfiguracaoSistema &c, const QStringList &linhas,
                                           Formulario formulario);

// The calibration page, for plain paper: the cheque's outline, rulers in millimetres along its
// top and left edges, a cross at the origin of the grid and the top of the magnetic band.
PaginaSistema pagina_calibracao(const ConfiguracaoSistema &c);

} // namespace vexa

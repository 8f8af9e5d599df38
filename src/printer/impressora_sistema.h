#pragma once
// "Impressora do sistema": cheques on any printer the system knows, inkjet or laser, with the
// blank cheque in the manual feed or on an A4 carrier.
//
// It keeps the bank layouts, the payees and the currency as the cheque printer does, in the
// same memory as the simulated printer (so a layout sent once serves both), and answers every
// memory command as it does. A cheque's face is composed from the bank's layout by the one
// composition of face_cheque.h, placed in millimetres by cheque_sistema.h, and handed as one
// job to the painter the program installed at start (define_impressor_sistema): to the system
// printer, or into a PDF file. Text (FormataTX, TolvaneTX) is gathered until the document ends
// (TravaDoc, the closing of the port) and goes as one job of pages.
//
// Its settings are read again at every opening of the port, so that a new calibration or
// another printer counts from the next print.
#include "printer/cheque_sistema.h"
#include "printer/simulador.h"

#include <QList>
#include <QString>

namespace vexa {

// One job for the system printer: its pages in order. With ArquivoPdf set, the job goes into
// that file instead of the printer.
struct TrabalhoSistema {
    QString Titulo;
    QString Impressora;
    QString ArquivoPdf;
    QList<PaginaSistema> Paginas;
};

// Prints a job: 0 when the system took it, 482 when the printer isn't there, another number
// when it refused the job.
using ImpressorSistema = int (*)(const TrabalhoSistema &trabalho);
void define_impressor_sistema(ImpressorSistema impressor);
// The installed painter's job, or 482 when the program installed none.
int imprime_trabalho_sistema(const TrabalhoSistema &trabalho);

// Shows a cheque's face on the screen before it prints; false when the operator gave up.
// Without one installed, nothing is shown.
using PreviaSistema = bool (*)(const PaginaSistema &face);
void define_previa_sistema(PreviaSistema previa);

// The names of the system's printers, from whoever can ask the system; none without one.
using ListaImpressoras = QStringList (*)();
void define_lista_impressoras(ListaImpressoras lista);
QStringList impressoras_conhecidas();

class ImpressoraSistema : public Simulador {
  public:
    // What it answers besides the simulator's codes.
    enum ResultadoSistema : qint16 {
        SemImpressora = 7,   // the system printer isn't there
        Recusou = 8,         // the system refused the job
        FaixaMagnetica = 9,  // the layout puts a field into the magnetic band
        CanceladoPrevia = 10 // the operator gave up at the preview
    };

    ImpressoraSistema(const QString &caminhoApp, const QString &caminhoIni);

    QString Descricao() const override;

    qint16 IniciaPorta(const QString &Porta) override;
    qint16 FechaPorta() override;
    qint16 TravaDoc(qint16 Trava) override;
    qint16 ImprimeCheque(const QString &Banco, const QString &Valor, const QString &Favorecido,
                         const QString &Cidade, const QString &Data, const QString &Extra) override;
    // Jobs go into this PDF file (every job replaces it) instead of the printer; empty: the
    // printer again.
    void DefineArquivoPdf(const QString &arquivo) { arquivoPdf_ = arquivo; }
    // A job the spooler took is not yet a cheque on paper: the operator is asked how it came
    // out. Not so for a PDF.
    bool ConfereNoPapel() const { return arquivoPdf_.isEmpty(); }
    // What an answer of ImprimeCheque means, in the operator's words; empty for one that
    // needs no more than its code.
    QString Motivo(qint16 resultado) const;

    const ConfiguracaoSistema &Configuracao() const { return config_; }
    // The page of the last cheque composed (printed, or stopped at its preview).
    const PaginaSistema &UltimaFace() const { return ultimaFace_; }

    // The face a cheque would print with now, without printing it: what the preview shows,
    // and the calibration screen's test cheque. Recusado names a field in the band.
    FaceSistema FaceCheque(const QString &Banco, const QString &Valor, const QString &Favorecido,
                           const QString &Cidade, const QString &Data,
                           const QMap<int, CampoExtra> &extras = {});
    // A job of its own pages (the calibration page), at the printer or the PDF in use.
    qint16 ImprimePaginas(const QString &titulo, const QList<PaginaSistema> &paginas);

    // The test cheque, with made-up values (R$ 1.234,56 to "Fulano de Tal", São Paulo, today),
    // for the bank given or else the first one in memory, between opening and closing the port.
    qint16 ImprimeChequeTeste(const QString &Banco = QString());

  private:
    // Text waits on this printer's own sheet for the document's end, with the port open
    // alone: paper is the system printer's business.
    FolhaTexto &folha_de_texto() override { return folha_; }
    qint16 recebe_texto(const QString &texto) override;
    int exige_texto() const override { return ExigePorta; }
    qint16 encerra_texto();

    QString caminhoIni_;
    QString arquivoPdf_;
    ConfiguracaoSistema config_;
    FolhaTexto folha_;
    bool temTexto_ = false;
    PaginaSistema ultimaFace_;
    QString recusado_;
    int linhaRecusada_ = 0;
};

} // namespace vexa

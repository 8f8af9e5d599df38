#pragma once
// The simulated cheque printer: what the program needs of the printer, without the printer.
//
// Its files live in <data folder>/impressora/:
//   simulador.ini  its settings, section [Simulador], read when the port is opened: Porta (the
//                  one port it answers on, "COM2" by default) and Papel (1 paper in and
//                  switched on, 0 off or out of paper; every print then answers SemPapel).
//   memoria.json   its memory and the journal of changes beside it (MemoriaImpressora).
//   papel/         every document it prints, numbered from 000001 (Papel); a cheque face is
//                  the grid of face_cheque.h.
//
// Texts come as the program sends them: their Windows-1252 bytes are what the printer reads,
// in its own code page 850. A payee passed through the program's character conversion prints
// its accents right; an extra field, sent unconverted, prints them as the printer reads them.
// A text ends at its first zero character, as the library's C string does. Text sent with
// FormataTX and TolvaneTX lands on a running sheet as folha_texto.h tells (inverted printing
// among it). A document is one sheet: it ends at TravaDoc, at the closing or a new opening of
// the port, or at a cheque face, and its PDF is written then. The first FormataTX of a
// document chooses its form: mode 2 is the transfer cheque's face or back, on a cheque form,
// unless it is the heading of a copy (C 1); every other text goes on a plain page.
#include "printer/face_cheque.h"
#include "printer/folha_texto.h"
#include "printer/memoria_impressora.h"
#include "printer/papel.h"
#include "printer/vexa32.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <functional>
#include <utility>

namespace vexa {

class Simulador : public Vexa32 {
  public:
    // What the simulator answers. MontaValor keeps the library's own answers: 0 done,
    // 1 bad values, 2 the answer file could not be written.
    enum Resultado : qint16 {
        Feito = 1,
        PortaFechada = 2,      // the port isn't open, or it is not this printer's port
        BancoSemLayout = 3,    // ImprimeCheque for a bank whose layout isn't in its memory
        SemPapel = 4,          // switched off or out of paper
        ArgumentoInvalido = 5, // an argument the printer can't take
        MemoriaFalhou = 6,     // its memory or its paper could not be written whole
    };
    enum ResultadoMontaValor : qint16 { ValorFeito = 0, ValoresErrados = 1, ArquivoFalhou = 2 };

    struct Chamada {
        QString Operacao;
        QStringList Argumentos;
        qint16 Resultado = 0;
        // "Operacao(arg1|arg2|...)": texts as they were passed, numbers in decimal.
        QString texto() const;
    };

    using ItemRelatorio = vexa::ItemRelatorio;

    // caminhoApp: the data folder; Extenso.ret is written there.
    explicit Simulador(const QString &caminhoApp);

    QString Descricao() const override;

    qint16 IniciaPorta(const QString &Porta) override;
    qint16 FechaPorta() override;
    qint16 TravaDoc(qint16 Trava) override;
    qint16 ImprimeCheque(const QString &Banco, const QString &Valor, const QString &Favorecido,
                         const QString &Cidade, const QString &Data, const QString &Extra) override;
    qint16 ImprimeCampoX(qint16 Campo, qint16 Linha, qint16 Coluna, const QString &Texto) override;
    qint16 FormataTX(const QString &Texto, qint16 Modo, qint16 A, qint16 B, qint16 C,
                     qint16 D) override;
    qint16 TolvaneTX(const QString &Texto) override;
    qint16 ComandoTX(const QString &Comando, qint16 Tamanho) override;
    qint16 IncluiBanco(const QString &Codigo, const QString &Posicoes) override;
    qint16 IncluiFavorecido(const QString &Codigo, const QString &Nome) override;
    qint16 ExcluiFavorecido(const QString &Codigo) override;
    qint16 AlteraMoeda(const QString &Singular, const QString &Plural) override;
    qint16 CancelaRel(const QString &Opcao) override;
    qint16 MontaValor(QString &Valor, const QString &Singular, const QString &Plural) override;

    // --- for tests and for the operator trying the program
    // From now on the operation answers codigo and does nothing else.
    void Falha(const QString &operacao, qint16 codigo);
    void LimpaFalhas();
    // Every call since the start (or the last LimpaChamadas), in order.
    const QList<Chamada> &Registro() const { return chamadas_; }
    QStringList Chamadas() const;
    void LimpaChamadas() { chamadas_.clear(); }

    QString Porta() const { return porta_; }
    void DefinePorta(const QString &porta);
    bool TemPapel() const { return temPapel_; }
    void DefinePapel(bool temPapel);

    // What the memory holds.
    const MemoriaImpressora &Memoria() const { return memoria_; }
    QMap<QString, QString> Bancos() const { return memoria_.Bancos(); }
    QMap<QString, QString> Favorecidos() const { return memoria_.Favorecidos(); }
    QString MoedaSingular() const { return memoria_.MoedaSingular(); }
    QString MoedaPlural() const { return memoria_.MoedaPlural(); }
    int DigitosAno() const { return memoria_.DigitosAno(); }
    QList<ItemRelatorio> Relatorio() const { return memoria_.Relatorio(); }
    bool PortaAberta() const { return aberta_; }

    QString PastaPapel() const { return papel_.Pasta(); }
    // The path of a sheet's text (NNNNNN.txt), and the number of the last sheet printed.
    QString ArquivoPapel(int numero) const { return papel_.Arquivo(numero); }
    int UltimoPapel() const { return memoria_.UltimoPapel(); }

    // The face of a cheque as it would print now, without printing it (the lines of the grid).
    // Empty when the bank has no layout or an argument can't be read.
    QStringList Face(const QString &Banco, const QString &Valor, const QString &Favorecido,
                     const QString &Cidade, const QString &Data) const;

  protected:
    // For a printer that keeps the same memory and prints elsewhere.
    ModeloFace modelo(const QString &Banco) const;
    // One operation, recorded with its answer. A failure a test set, the closed port (with
    // ExigePorta) and the missing paper (with ExigePapel) answer ahead of faz.
    enum Exigencia { ExigePorta = 1, ExigePapel = 2 };
    qint16 opera(const QString &operacao, const QStringList &argumentos, int exige,
                 const std::function<qint16()> &faz);
    // Where FormataTX and TolvaneTX put their text: the running sheet, what receives the text,
    // and what they need first. A printer that keeps this memory and prints elsewhere has its
    // own.
    virtual FolhaTexto &folha_de_texto() { return folha_; }
    virtual qint16 recebe_texto(const QString &texto) { return escreve_texto(texto); }
    virtual int exige_texto() const { return ExigePorta | ExigePapel; }
    // The extra fields given for the next cheque, handed over once.
    QMap<int, CampoExtra> toma_extras() { return std::exchange(extras_, {}); }

  private:
    bool falha(const QString &operacao, qint16 &codigo) const;
    void le_configuracao();
    qint16 escreve_texto(const QString &texto);
    qint16 poe_no_papel(const QString &impresso);
    // Ends the document: what inverted printing held goes on paper, and the PDF is written.
    // MemoriaFalhou when either didn't reach the disk whole; the closing of the port then
    // answers it too, as nobody looks at what TravaDoc answers.
    qint16 encerra_documento();

    QString caminhoApp_, pasta_;
    QString porta_ = "COM2";
    bool temPapel_ = true;
    bool aberta_ = false;

    MemoriaImpressora memoria_;
    Papel papel_;

    QMap<int, CampoExtra> extras_;
    int documento_ = 0;   // the sheet a run of text is going to, 0 when none
    FolhaTexto folha_;    // what the printer has read of that run
    bool perdeu_ = false; // a document since the port opened didn't end whole
    QMap<QString, qint16> falhas_;
    QList<Chamada> chamadas_;
};

} // namespace vexa

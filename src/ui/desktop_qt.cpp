#include "ui/desktop_qt.h"

#include "core/ajuda.h"
#include "ui/binder.h"
#include "ui/vistas.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QEventLoop>
#include <QFile>
#include <QFileDialog>
#include <QFontDatabase>
#include <QGridLayout>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMessageBox>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QPushButton>
#include <QScreen>
#include <QSpacerItem>
#include <QStyle>
#include <QTextBrowser>
#include <QToolBar>

namespace vexa::ui {

// The window of one screen: it owns the model, so the model lives as long as its window.
class JanelaTela : public QMainWindow {
  public:
    JanelaTela(std::unique_ptr<Tela> tela) : tela_(std::move(tela)) {
        setAttribute(Qt::WA_DeleteOnClose, false);
        setObjectName(tela_->Nome);
    }
    // The binder leaves first: it still speaks to the model as it goes.
    ~JanelaTela() override { delete binder; }
    Tela &tela() { return *tela_; }
    Binder *binder = nullptr;
    QEventLoop *laco = nullptr;

  protected:
    void changeEvent(QEvent *ev) override {
        QMainWindow::changeEvent(ev);
        // A message box closing in the middle of a handler gives the window back too: that
        // is no new activation of the screen.
        if (ev->type() != QEvent::ActivationChange || !isActiveWindow() || Binder::Ocupado() ||
            tela_->Descarregada())
            return;
        Binder::Despacha([this] { tela_->Form_Activate(); });
    }
    // The keys no control took: Escape presses the screen's button that leaves it, F1 opens
    // the screen's help page.
    void keyPressEvent(QKeyEvent *ev) override {
        if (ev->modifiers() == Qt::NoModifier && !tela_->Descarregada()) {
            if (ev->key() == Qt::Key_Escape) {
                bool fechou = false;
                Binder::Despacha([&] { fechou = tela_->TeclaEsc(); });
                if (fechou) return;
            } else if (ev->key() == Qt::Key_F1) {
                return tela_->desktop.Ajuda(topico_ajuda(tela_->Nome));
            }
        }
        QMainWindow::keyPressEvent(ev);
    }
    void closeEvent(QCloseEvent *ev) override {
        if (tela_->Descarregada()) return ev->accept();
        int cancela = 0;
        Binder::Despacha([&] { tela_->Form_QueryUnload(cancela); });
        if (cancela) return ev->ignore();
        ev->accept();
        tela_->desktop.Fecha(*tela_);
    }

  private:
    std::unique_ptr<Tela> tela_;
};

namespace {
// The window a dialog belongs to: the active one, unless it is already closing (a window
// closed but not yet destroyed would take the dialog with it).
QWidget *dono_do_dialogo() {
    QWidget *ativa = QApplication::activeWindow();
    return ativa && ativa->isVisible() ? ativa : nullptr;
}

// Puts a window in the middle of the desktop; a desktop narrower than 640 pixels gets it at
// its top left corner.
void centra(QWidget &janela) {
    if (QScreen *tela_fisica = QApplication::primaryScreen()) {
        const QRect area = tela_fisica->availableGeometry();
        if (area.width() <= 640)
            janela.move(area.topLeft());
        else
            janela.move(area.center() - janela.rect().center());
    }
}

// Sizes the window for its screen and centres it on the desktop.
void posiciona(QMainWindow &janela, const Tela &t) {
    if (t.LarguraJanela > 0 && t.AlturaJanela > 0)
        janela.resize(t.LarguraJanela, t.AlturaJanela);
    else
        janela.adjustSize();
    centra(janela);
}
} // namespace

DesktopQt::DesktopQt() = default;
DesktopQt::~DesktopQt() = default;

Resposta DesktopQt::MsgBox(const QString &texto, Botoes botoes, const QString &titulo, Icone icone,
                           std::optional<Resposta> Padrao) {
    QMessageBox caixa(dono_do_dialogo());
    caixa.setObjectName("MsgBox");
    // The program's texts are plain ("<ok>" is a word, not a tag), and a carriage return
    // alone breaks the line as the classic boxes did.
    caixa.setTextFormat(Qt::PlainText);
    caixa.setText(QString(texto).replace("\r\n", "\n").replace('\r', '\n'));
    // A box without a title shows the program's name, as the desktop always did.
    caixa.setWindowTitle(titulo.isEmpty() ? QStringLiteral("Vexa Plus") : titulo);
    switch (icone) {
    case Icone::Critico:
        caixa.setIcon(QMessageBox::Critical);
        break;
    case Icone::Pergunta:
        caixa.setIcon(QMessageBox::Question);
        break;
    case Icone::Exclamacao:
        caixa.setIcon(QMessageBox::Warning);
        break;
    case Icone::Informacao:
        caixa.setIcon(QMessageBox::Information);
        break;
    case Icone::Nenhum:
        break;
    }
    struct B {
        QMessageBox::StandardButton qt;
        Resposta r;
        const char *texto;
    };
    QList<B> lista;
    switch (botoes) {
    case Botoes::OK:
        lista = {{QMessageBox::Ok, Resposta::OK, "OK"}};
        break;
    case Botoes::OKCancel:
        lista = {{QMessageBox::Ok, Resposta::OK, "OK"},
                 {QMessageBox::Cancel, Resposta::Cancel, "Cancelar"}};
        break;
    case Botoes::AbortRetryIgnore:
        lista = {{QMessageBox::Abort, Resposta::Abort, "&Anular"},
                 {QMessageBox::Retry, Resposta::Retry, "&Repetir"},
                 {QMessageBox::Ignore, Resposta::Ignore, "&Ignorar"}};
        break;
    case Botoes::YesNoCancel:
        lista = {{QMessageBox::Yes, Resposta::Yes, "&Sim"},
                 {QMessageBox::No, Resposta::No, "&Não"},
                 {QMessageBox::Cancel, Resposta::Cancel, "Cancelar"}};
        break;
    case Botoes::YesNo:
        lista = {{QMessageBox::Yes, Resposta::Yes, "&Sim"},
                 {QMessageBox::No, Resposta::No, "&Não"}};
        break;
    case Botoes::RetryCancel:
        lista = {{QMessageBox::Retry, Resposta::Retry, "&Repetir"},
                 {QMessageBox::Cancel, Resposta::Cancel, "Cancelar"}};
        break;
    }
    QMessageBox::StandardButtons padrao;
    for (const auto &b : lista)
        padrao |= b.qt;
    caixa.setStandardButtons(padrao);
    for (const auto &b : lista)
        caixa.button(b.qt)->setText(QString::fromUtf8(b.texto));
    caixa.setDefaultButton(lista.first().qt);
    for (const auto &b : lista)
        if (Padrao && b.r == *Padrao) caixa.setDefaultButton(b.qt);
    // The title says which document a question is about: the box is made wide enough that
    // the window manager never cuts it (a message box takes no minimum width of its own).
    const int larguraTitulo = caixa.fontMetrics().horizontalAdvance(caixa.windowTitle()) + 160;
    if (auto *grade = qobject_cast<QGridLayout *>(caixa.layout()))
        grade->addItem(
            new QSpacerItem(larguraTitulo, 0, QSizePolicy::Minimum, QSizePolicy::Expanding),
            grade->rowCount(), 0, 1, grade->columnCount());
    const int escolhido = caixa.exec();
    for (const auto &b : lista)
        if (escolhido == b.qt) return b.r;
    // Closing the box answers as its cancelling button, or the only one.
    return lista.size() == 1 ? lista.first().r : lista.last().r;
}

Tela *DesktopQt::Abre(std::unique_ptr<Tela> tela, bool modal) {
    if (Tela *ja = Aberta(tela->Nome)) {
        if (QMainWindow *j = Janela(*ja)) {
            j->showNormal();
            j->raise();
            j->activateWindow();
        }
        return ja;
    }
    const FabricaVista fabrica = vista_de(tela->Nome);
    auto *janela = new JanelaTela(std::move(tela));
    Tela &t = janela->tela();
    janelas_.append(janela);
    if (fabrica) fabrica(t, *janela);
    janela->binder = new Binder(t, janela);
    Binder::Despacha([&t] { t.Form_Load(); });
    if (t.Descarregada()) return nullptr;
    if (!janela->isVisible()) posiciona(*janela, t);
    if (!t.Visible) return &t;
    if (modal) {
        janela->setWindowModality(Qt::ApplicationModal);
        QEventLoop laco;
        janela->laco = &laco;
        janela->show();
        janela->activateWindow();
        janela->binder->Espelha();
        laco.exec();
        return nullptr;
    }
    janela->show();
    janela->activateWindow();
    janela->binder->Espelha();
    return &t;
}

void DesktopQt::Fecha(Tela &tela) {
    if (tela.Descarregada()) return;
    tela.Form_Unload();
    tela.marcaDescarregada();
    for (const auto &j : janelas_) {
        if (!j || &j->tela() != &tela) continue;
        JanelaTela *janela = j;
        janelas_.removeAll(j);
        if (janela->laco) janela->laco->quit();
        janela->hide();
        janela->deleteLater();
        break;
    }
}

void DesktopQt::Mostra(Tela &tela) {
    QMainWindow *janela = Janela(tela);
    if (!janela) return;
    if (!janela->isVisible()) posiciona(*janela, tela);
    janela->showNormal();
    janela->raise();
    janela->activateWindow();
    if (auto *j = static_cast<JanelaTela *>(janela); j->binder) j->binder->Espelha();
}

void DesktopQt::Encerra(int codigo) {
    for (const auto &j : janelas_)
        if (j) j->tela().marcaDescarregada();
    QCoreApplication::exit(codigo);
}

Tela *DesktopQt::Aberta(const QString &nome) const {
    for (const auto &j : janelas_)
        if (j && j->tela().Nome == nome && !j->tela().Descarregada()) return &j->tela();
    return nullptr;
}

QMainWindow *DesktopQt::Janela(const Tela &tela) const {
    for (const auto &j : janelas_)
        if (j && &j->tela() == &tela) return j;
    return nullptr;
}

QString DesktopQt::SalvarComo(const QString &titulo, const QString &filtro,
                              const QString &nomeSugerido) {
    return QFileDialog::getSaveFileName(dono_do_dialogo(), titulo, nomeSugerido, filtro);
}

int DesktopQt::ImprimeSistema(const DocumentoImpressao &documento) {
    QPrinter impressora(QPrinter::HighResolution);
    impressora.setDocName(documento.Titulo);
    QPrintDialog dialogo(&impressora, dono_do_dialogo());
    dialogo.setWindowTitle("Imprimir");
    if (dialogo.exec() != QDialog::Accepted) return 32755;
    return ImprimePaginas(impressora, documento);
}

int DesktopQt::ImprimePaginas(QPrinter &impressora, const DocumentoImpressao &documento) {
    if (impressora.outputFormat() == QPrinter::NativeFormat && !impressora.isValid()) return 482;
    QPainter pintor;
    if (!pintor.begin(&impressora)) return 482;
    QFont fonte("Courier New", documento.TamanhoFonte);
    fonte.setStyleHint(QFont::TypeWriter);
    fonte.setFixedPitch(true);
    pintor.setFont(fonte);
    const QFontMetrics m(fonte, &impressora);
    const int altura = m.lineSpacing();
    for (int p = 0; p < documento.Paginas.size(); ++p) {
        if (p > 0 && !impressora.newPage()) {
            pintor.end();
            return 482;
        }
        int y = m.ascent();
        for (const QString &linha : documento.Paginas[p]) {
            pintor.drawText(0, y, linha);
            y += altura;
        }
    }
    pintor.end();
    return 0;
}

namespace {

const QString PastaAjuda = QStringLiteral(":/ajuda/");
const QString TituloAjuda = QStringLiteral("Ajuda do Software Vexa Plus");

// The page of a topic, "pagina" or "pagina#lugar": "Conteudo" is the contents page; a topic
// without a page of its own opens the contents.
QUrl pagina_ajuda(const QString &topico) {
    const QString nome = topico.section(u'#', 0, 0).trimmed().toLower();
    const QString lugar = topico.section(u'#', 1);
    const bool existe = !nome.isEmpty() && QFile::exists(PastaAjuda + nome + ".html");
    QUrl url("qrc" + PastaAjuda + (existe ? nome + ".html" : QStringLiteral("conteudo.html")));
    if (existe && !lugar.isEmpty()) url.setFragment(lugar);
    return url;
}

// The help: the pages shipped with the program, with the way back and forward between them
// and the way home to the contents. One window for the whole run.
class JanelaAjuda : public QMainWindow {
  public:
    JanelaAjuda() {
        setObjectName("Ajuda");
        setAttribute(Qt::WA_DeleteOnClose);
        texto_ = new QTextBrowser(this);
        texto_->setObjectName("Texto");
        texto_->setOpenExternalLinks(true);
        setCentralWidget(texto_);

        auto *barra = addToolBar("Navegação");
        barra->setObjectName("Navegacao");
        barra->setMovable(false);
        barra->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        auto *voltar = barra->addAction(style()->standardIcon(QStyle::SP_ArrowBack), "&Voltar");
        voltar->setObjectName("Voltar");
        voltar->setShortcut(QKeySequence::Back);
        auto *avancar =
            barra->addAction(style()->standardIcon(QStyle::SP_ArrowForward), "&Avançar");
        avancar->setObjectName("Avancar");
        avancar->setShortcut(QKeySequence::Forward);
        auto *conteudo =
            barra->addAction(style()->standardIcon(QStyle::SP_DirHomeIcon), "&Conteúdo");
        conteudo->setObjectName("Conteudo");
        voltar->setEnabled(false);
        avancar->setEnabled(false);
        connect(voltar, &QAction::triggered, texto_, &QTextBrowser::backward);
        connect(avancar, &QAction::triggered, texto_, &QTextBrowser::forward);
        connect(conteudo, &QAction::triggered, this, [this] { mostra("Conteudo"); });
        connect(texto_, &QTextBrowser::backwardAvailable, voltar, &QAction::setEnabled);
        connect(texto_, &QTextBrowser::forwardAvailable, avancar, &QAction::setEnabled);
        connect(texto_, &QTextBrowser::sourceChanged, this, [this] {
            const QString pagina = texto_->documentTitle();
            setWindowTitle(pagina.isEmpty() ? TituloAjuda : TituloAjuda + " - " + pagina);
        });
        setWindowTitle(TituloAjuda);
        resize(680, 560);
    }

    void mostra(const QString &topico) {
        const QUrl pagina = pagina_ajuda(topico);
        if (texto_->source() != pagina) texto_->setSource(pagina);
    }

  private:
    QTextBrowser *texto_;
};

QPointer<JanelaAjuda> janela_ajuda;

} // namespace

void DesktopQt::Ajuda(const QString &topico) {
    if (!janela_ajuda) {
        janela_ajuda = new JanelaAjuda;
        centra(*janela_ajuda);
    }
    janela_ajuda->mostra(topico);
    janela_ajuda->showNormal();
    janela_ajuda->raise();
    janela_ajuda->activateWindow();
}

void DesktopQt::Processa() {
    QCoreApplication::processEvents();
}

} // namespace vexa::ui

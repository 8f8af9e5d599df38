#include "core/instancia.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>
#include <QThread>
#include <QTimer>
#include <memory>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace vexa {

namespace {
constexpr char Cabecalho[] = "VEXA-PLUS/1";
constexpr int TamanhoMaximo = 8192;
constexpr int CampoMaximo = 200;
// Requests served at once. The rest wait in the system's queue, so that a flood of
// connections never takes every descriptor the process has: the link would be lost with them.
constexpr int ConexoesMaximas = 32;
// A client that never finishes its request is dropped.
constexpr int EsperaPedidoMs = 3000;
bool indice_valido(int i) {
    return i >= 0 && i <= 6 && i != 5;
}

// A folder that this user owns and nobody else can enter or change: made when missing,
// closed to others when it is ours but open, refused when it is anyone else's or a link.
bool pasta_so_do_usuario(const QString &pasta) {
    const QByteArray p = QFile::encodeName(pasta);
    ::mkdir(p.constData(), 0700);
    struct stat st {};
    if (::lstat(p.constData(), &st) != 0 || !S_ISDIR(st.st_mode) || st.st_uid != ::geteuid())
        return false;
    return (st.st_mode & 077) == 0 || ::chmod(p.constData(), 0700) == 0;
}

// A base folder where others can't swap our folder for theirs: ours, and not writable by
// anyone else.
bool base_segura(const QString &pasta) {
    struct stat st {};
    return !pasta.isEmpty() && ::stat(QFile::encodeName(pasta).constData(), &st) == 0 &&
           S_ISDIR(st.st_mode) && st.st_uid == ::geteuid() && (st.st_mode & 022) == 0;
}

// The other end of a local socket runs as this same user.
bool mesmo_usuario(qintptr descritor) {
#ifdef SO_PEERCRED
    struct ucred cred {};
    socklen_t tamanho = sizeof(cred);
    if (::getsockopt(int(descritor), SOL_SOCKET, SO_PEERCRED, &cred, &tamanho) != 0) return false;
    return cred.uid == ::geteuid();
#else
    uid_t uid = 0;
    gid_t gid = 0;
    return ::getpeereid(int(descritor), &uid, &gid) == 0 && uid == ::geteuid();
#endif
}
} // namespace

QString Instancia::NomeLink(const QString &caminhoApp) {
    const QString pasta = QDir::cleanPath(caminhoApp);
    const QString hash = QString::fromLatin1(
        QCryptographicHash::hash(pasta.toUtf8(), QCryptographicHash::Sha1).toHex().left(12));
    // The user's runtime folder where the session has one; the data folder otherwise.
    QString base = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!base_segura(base)) {
        base = pasta;
        QDir().mkpath(base);
    }
    const QString folder = base + "/vexa-plus";
    const QString nome = folder + "/" + hash;
    if (QFile::encodeName(nome).size() >= qsizetype(sizeof(sockaddr_un::sun_path)) ||
        !pasta_so_do_usuario(folder))
        return {};
    return nome;
}

Instancia::Instancia(const QString &caminhoApp, QObject *pai)
    : QObject(pai), caminhoApp_(QDir::cleanPath(caminhoApp)), nome_(NomeLink(caminhoApp)) {}

Instancia::~Instancia() {
    if (trava_ >= 0) ::close(trava_);
}

bool Instancia::tranca() {
    if (travada_) return true;
    QDir().mkpath(caminhoApp_);
    const QByteArray arquivo = QFile::encodeName(caminhoApp_ + "/VEXA.lock");
    // Not inherited by programs started from here, so that the lock ends with this process.
    const int fd = ::open(arquivo.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (fd < 0) {
        // A folder where no lock can be made has no copy to keep out either.
        travada_ = true;
        return true;
    }
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        ::close(fd);
        return false;
    }
    trava_ = fd;
    travada_ = true;
    return true;
}

QByteArray Instancia::Codifica(const QMap<int, QString> &campos) {
    QByteArray b = Cabecalho;
    b += '\n';
    for (auto it = campos.begin(); it != campos.end(); ++it)
        b += "Text1(" + QByteArray::number(it.key()) +
             ")=" + it.value().left(CampoMaximo).toUtf8().toBase64() + '\n';
    b += "FIM\n";
    return b;
}

bool Instancia::Decodifica(const QByteArray &bytes, QMap<int, QString> &campos) {
    campos.clear();
    if (bytes.size() > TamanhoMaximo || !bytes.endsWith("FIM\n")) return false;
    const QList<QByteArray> linhas = bytes.left(bytes.size() - 1).split('\n');
    if (linhas.size() < 2 || linhas.first() != Cabecalho || linhas.last() != "FIM") return false;
    for (int i = 1; i + 1 < linhas.size(); ++i) {
        const QByteArray &l = linhas[i];
        if (!l.startsWith("Text1(") || l.size() < 9 || l[7] != ')' || l[8] != '=') return false;
        const char d = l[6];
        if (d < '0' || d > '9') return false;
        const int indice = d - '0';
        if (!indice_valido(indice) || campos.contains(indice)) return false;
        const auto b64 =
            QByteArray::fromBase64Encoding(l.mid(9), QByteArray::AbortOnBase64DecodingErrors);
        if (!b64) return false;
        const QString valor = QString::fromUtf8(*b64);
        if (valor.contains(QChar(0))) return false;
        // A longer value is no field's: the field's own limit cuts it further, with its message.
        campos.insert(indice, valor.left(CampoMaximo));
    }
    return true;
}

bool Instancia::entrega(const QString &nome, const QMap<int, QString> &campos, int esperaMs) {
    QLocalSocket s;
    s.connectToServer(nome);
    if (!s.waitForConnected(qMin(esperaMs, 1000))) return false;
    if (!mesmo_usuario(s.socketDescriptor())) {
        s.abort();
        return false;
    }
    const QByteArray pedido = Codifica(campos);
    s.write(pedido);
    while (s.bytesToWrite() > 0)
        if (!s.waitForBytesWritten(esperaMs)) return false;
    // The running copy closes the link when it has taken the request; a copy busy in a long
    // call takes it when the call returns, so the request is delivered all the same.
    s.waitForDisconnected(esperaMs);
    return true;
}

bool Instancia::EntregaAoPrimeiro(const QMap<int, QString> &campos, int esperaMs) {
    const QDeadlineTimer prazo(esperaMs);
    while (true) {
        if (tranca()) return false;
        if (!nome_.isEmpty() &&
            entrega(nome_, campos, int(qMax<qint64>(prazo.remainingTime(), 100))))
            return true;
        if (prazo.hasExpired()) return true;
        // The running copy may not be listening yet.
        QThread::msleep(50);
    }
}

bool Instancia::Escuta() {
    if (!tranca() || nome_.isEmpty()) return false;
    if (!abre_link()) return false;
    // The link is looked after for the whole run: should it ever close (the system refused a
    // connection) or its file go, it is made again, since the lock is still ours.
    auto *vigia = new QTimer(this);
    connect(vigia, &QTimer::timeout, this, [this] {
        if (!servidor_->isListening() || !QFileInfo::exists(nome_)) abre_link();
    });
    vigia->start(1000);
    return true;
}

bool Instancia::abre_link() {
    // With the lock ours no copy runs: a socket left here is a dead copy's, or our own lost one.
    if (servidor_) servidor_->close();
    QLocalServer::removeServer(nome_);
    if (!servidor_) {
        servidor_ = new QLocalServer(this);
        servidor_->setSocketOptions(QLocalServer::UserAccessOption);
        connect(servidor_, &QLocalServer::newConnection, this, &Instancia::nova_conexao);
    }
    return servidor_->listen(nome_);
}

void Instancia::nova_conexao() {
    while (atendendo_ < ConexoesMaximas) {
        QLocalSocket *s = servidor_->nextPendingConnection();
        if (!s) return;
        if (!mesmo_usuario(s->socketDescriptor())) {
            s->abort();
            s->deleteLater();
            continue;
        }
        ++atendendo_;
        connect(s, &QObject::destroyed, this, [this] {
            --atendendo_;
            // A place is free: the next connection waiting is taken.
            QTimer::singleShot(0, this, &Instancia::nova_conexao);
        });
        auto dados = std::make_shared<QByteArray>();
        const auto le = [this, s, dados] {
            *dados += s->readAll();
            if (dados->size() > TamanhoMaximo) return s->abort();
            // Only the line FIM ends a request: a field's line may end in those letters too,
            // and its next piece may still be on the way.
            if (!dados->endsWith("\nFIM\n")) return;
            QMap<int, QString> campos;
            const bool ok = Decodifica(*dados, campos);
            dados->clear();
            s->disconnectFromServer();
            if (ok && aoReceber) aoReceber(campos);
        };
        connect(s, &QLocalSocket::readyRead, this, le);
        connect(s, &QLocalSocket::disconnected, s, &QObject::deleteLater);
        QTimer::singleShot(EsperaPedidoMs, s, [s] {
            // What arrived while this copy was busy is read before the client is dropped.
            s->waitForReadyRead(0);
            s->abort();
            s->deleteLater();
        });
    }
}

} // namespace vexa

#include "core/instancia.h"

#include <QCryptographicHash>
#include <QDir>
#include <QLocalServer>
#include <QLocalSocket>
#include <QTimer>

#ifdef Q_OS_LINUX
#include <sys/socket.h>
#include <unistd.h>
#endif

namespace vexa {

namespace {
constexpr char Cabecalho[] = "VEXA-PLUS/1";
constexpr int TamanhoMaximo = 8192;
constexpr int CampoMaximo = 200;
bool indice_valido(int i) {
    return i >= 0 && i <= 6 && i != 5;
}
} // namespace

QString Instancia::NomeLink(const QString &caminhoApp) {
    const QByteArray h =
        QCryptographicHash::hash(QDir::cleanPath(caminhoApp).toUtf8(), QCryptographicHash::Sha1)
            .toHex()
            .left(12);
    QString usuario = qEnvironmentVariable("USER");
#ifdef Q_OS_LINUX
    usuario = QString::number(getuid());
#endif
    return QStringLiteral("vexa-plus-%1-%2").arg(usuario, QString::fromLatin1(h));
}

Instancia::Instancia(const QString &nome, QObject *pai) : QObject(pai), nome_(nome) {}

Instancia::~Instancia() = default;

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

bool Instancia::EntregaAoPrimeiro(const QMap<int, QString> &campos, int esperaMs) {
    QLocalSocket s;
    s.connectToServer(nome_);
    if (!s.waitForConnected(esperaMs)) return false;
    s.write(Codifica(campos));
    s.waitForBytesWritten(esperaMs);
    // The running copy closes the link when it has taken the request.
    s.waitForDisconnected(esperaMs);
    return true;
}

bool Instancia::Escuta() {
    servidor_ = new QLocalServer(this);
    servidor_->setSocketOptions(QLocalServer::UserAccessOption);
    if (!servidor_->listen(nome_)) {
        // A copy that died left its socket behind: nobody answered on it, so it is ours.
        QLocalServer::removeServer(nome_);
        if (!servidor_->listen(nome_)) return false;
    }
    connect(servidor_, &QLocalServer::newConnection, this, &Instancia::nova_conexao);
    return true;
}

bool Instancia::mesmo_usuario(QLocalSocket &s) {
#ifdef Q_OS_LINUX
    struct ucred cred {};
    socklen_t tamanho = sizeof(cred);
    if (getsockopt(int(s.socketDescriptor()), SOL_SOCKET, SO_PEERCRED, &cred, &tamanho) != 0)
        return false;
    return cred.uid == getuid();
#else
    Q_UNUSED(s);
    return true;
#endif
}

void Instancia::nova_conexao() {
    while (QLocalSocket *s = servidor_->nextPendingConnection()) {
        if (!mesmo_usuario(*s)) {
            s->abort();
            s->deleteLater();
            continue;
        }
        auto *dados = new QByteArray;
        // A client that never finishes its request is dropped.
        QTimer::singleShot(3000, s, [s] { s->abort(); });
        connect(s, &QLocalSocket::disconnected, s, [s, dados] {
            delete dados;
            s->deleteLater();
        });
        connect(s, &QLocalSocket::readyRead, this, [this, s, dados] {
            *dados += s->readAll();
            if (dados->size() > TamanhoMaximo) return s->abort();
            if (!dados->endsWith("FIM\n")) return;
            QMap<int, QString> campos;
            const bool ok = Decodifica(*dados, campos);
            s->disconnectFromServer();
            if (ok && aoReceber) aoReceber(campos);
        });
    }
}

} // namespace vexa

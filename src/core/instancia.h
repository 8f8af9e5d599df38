#pragma once
// One running copy per data folder. A lock on a file in the data folder, held for the whole
// run, decides which copy runs; a later start finds it held, hands the fields of its command
// line to the running copy over a local socket and ends. The socket lies in a folder that
// only its user can reach, and each end checks that the other is the same user.
#include <QMap>
#include <QObject>
#include <QString>
#include <functional>

class QLocalServer;
class QLocalSocket;

namespace vexa {

class Instancia : public QObject {
    Q_OBJECT
  public:
    // The socket's full path for this user and data folder, in the user's own runtime folder
    // (mode 0700, checked to be the user's); empty when no such folder can be had.
    static QString NomeLink(const QString &caminhoApp);

    explicit Instancia(const QString &caminhoApp, QObject *pai = nullptr);
    ~Instancia() override;

    // Takes the data folder's lock, or hands the fields (index of the entry screen's Text1
    // and text; none only brings the running copy forward) to the copy that holds it. False:
    // this process holds the lock now and goes on as the running copy. True: another copy
    // runs and this one must end; the fields were handed over unless that copy gave no answer
    // within esperaMs (it may still be starting, so it is asked again until then; should it
    // die meanwhile, its lock is taken over and the answer is false).
    bool EntregaAoPrimeiro(const QMap<int, QString> &campos, int esperaMs = 10000);

    // Becomes the running copy (taking the lock when not yet held): requests arrive in
    // aoReceber, in the event loop. False when another copy holds the lock, or the socket
    // can't be made.
    bool Escuta();

    // A well-formed request: the fields in index order (possibly none).
    std::function<void(const QMap<int, QString> &campos)> aoReceber;

    // The request's wire form, and its reading: false for anything not well formed.
    static QByteArray Codifica(const QMap<int, QString> &campos);
    static bool Decodifica(const QByteArray &bytes, QMap<int, QString> &campos);

    // One hand-over on the socket at nome: true when a copy of this same user took it whole.
    static bool entrega(const QString &nome, const QMap<int, QString> &campos, int esperaMs);

  private:
    bool tranca();
    // Listens on the socket, made anew.
    bool abre_link();
    void nova_conexao();

    QString caminhoApp_;
    QString nome_;
    int trava_ = -1;       // the lock file's descriptor while the lock is held
    bool travada_ = false; // this copy runs: the lock is held, or the folder can't have one
    QLocalServer *servidor_ = nullptr;
    int atendendo_ = 0; // connections taken and not yet ended
};

} // namespace vexa

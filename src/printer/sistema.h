#pragma once
// The road to the system printer: the pages of a document, and the errors a print can end with.
#include "core/desktop.h"

#include <QString>
#include <QStringList>

namespace vexa {

// A document for the system printer from pages composed as for the cheque printer: each page
// a text of lines ended by CR LF (or LF alone). The end of the last line makes no empty line;
// empty lines inside a page stay.
DocumentoImpressao documento_impressao(const QString &titulo, const QStringList &paginas,
                                       int tamanhoFonte = 10);

// The message a print on the system printer ends with: 0 none; 482 the four causes; 32755
// (the operator cancelled the dialog) none, unless avisaCancelado asks for it as any other
// number: "Ocorreu erro 32755!".
QString texto_erro_impressao(int erro, bool avisaCancelado = false);
void mostra_erro_impressao(Desktop &d, int erro, bool avisaCancelado = false);

} // namespace vexa

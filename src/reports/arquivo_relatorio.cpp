#include "reports/arquivo_relatorio.h"

#include "core/arquivo.h"

#include <QFileInfo>

namespace vexa {

QString pede_arquivo(Desktop &d, const QString &titulo, const QString &filtro,
                     const QString &extensao) {
    QString caminho = d.SalvarComo(titulo, filtro + ";;Todos os Arquivos (*.*)", QString());
    if (!caminho.isEmpty() && QFileInfo(caminho).suffix().isEmpty()) caminho += "." + extensao;
    return caminho;
}

void avisa_arquivo_nao_gravado(Desktop &d, const QString &caminho) {
    d.MsgBox("Não foi possível gravar o arquivo \"" + caminho +
                 "\". Verifique se a pasta existe, se há espaço no disco e se o arquivo "
                 "não está aberto em outro programa.",
             Botoes::OK, "Erro", Icone::Exclamacao);
}

bool grava_arquivo_relatorio(Desktop &d, const QString &titulo, const QString &texto) {
    const QString caminho = pede_arquivo(d, titulo, "Arquivo Texto (*.txt)", "txt");
    if (caminho.isEmpty()) return false;
    if (!grava_inteiro(caminho, "\xEF\xBB\xBF" + texto.toUtf8())) {
        avisa_arquivo_nao_gravado(d, caminho);
        return false;
    }
    return true;
}

} // namespace vexa

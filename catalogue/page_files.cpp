#include "catalogue/page_files.h"

#include "catalogue/output_folder.h"

namespace quillon {

// Made from the files of page/ by the build.
#define PAGE_FILE(symbol)                                                                          \
    extern const unsigned char symbol[];                                                           \
    extern const int symbol##Size;
PAGE_FILE(page_index_htm)
PAGE_FILE(page_catalogue_css)
PAGE_FILE(page_likeness_js)
PAGE_FILE(page_catalogue_model_js)
PAGE_FILE(page_virtual_list_js)
PAGE_FILE(page_page_cells_js)
PAGE_FILE(page_catalogue_page_js)
#undef PAGE_FILE

bool writePage(const QString& output, QString* why)
{
    const struct {
        const char* name;
        const unsigned char* bytes;
        int size;
    } files[] = {
        {"catalogue.css", page_catalogue_css, page_catalogue_cssSize},
        {"likeness.js", page_likeness_js, page_likeness_jsSize},
        {"catalogue_model.js", page_catalogue_model_js, page_catalogue_model_jsSize},
        {"virtual_list.js", page_virtual_list_js, page_virtual_list_jsSize},
        {"page_cells.js", page_page_cells_js, page_page_cells_jsSize},
        {"catalogue_page.js", page_catalogue_page_js, page_catalogue_page_jsSize},
        {"index.htm", page_index_htm, page_index_htmSize},
    };
    for (const auto& file : files) {
        const QByteArray bytes(reinterpret_cast<const char*>(file.bytes), file.size);
        if (!writeOutput(output + '/' + file.name, bytes, why))
            return false;
    }
    return true;
}

} // namespace quillon

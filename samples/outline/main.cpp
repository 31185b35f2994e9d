// SPDX-License-Identifier: Apache-2.0
// outline DOC.xml: prints the element tree of an XML document.
#include <cstdio>
#include <vSAXReader.h>

#include "outline_handler.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: outline DOC.xml\n");
        return 2;
    }
    const auto handler = OXAVar<OutlineHandler>::Adopt(new OutlineHandler);
    vSAXReader reader;
    reader.SetDocumentHandler(handler.Get());
    const HRESULT result = reader.LoadFile(argv[1]);  // what is wrong with it goes to the kernel log

    for (const OutlineElement& element : handler->elements()) {
        std::printf("%*s%s", static_cast<int>(2 * element.depth), "", element.name.c_str());
        for (const auto& [name, value] : element.attributes) {
            std::printf(" %s=\"%s\"", name.c_str(), value.c_str());
        }
        std::printf(element.text.empty() ? "\n" : ": %s\n", element.text.c_str());
    }
    return SUCCEEDED(result) && SUCCEEDED(handler->GetStatus()) ? 0 : 1;
}

// The schemas that a reader has loaded.
#ifndef SCHEMA_SET_H
#define SCHEMA_SET_H

#include <memory>
#include <string>
#include <vector>

#include "events/ErrorRelay.h"
#include "input/InputSource.h"
#include "limits/ParseLocator.h"
#include "parser/SchemaPool.h"
#include "schemas/SchemaResolver.h"

namespace sax {

class SchemaSet {
public:
    /// Adds the schema, or puts it in the place of the one with the same key, unless it has errors: those are
    /// reported to `errors`, and the set is as before.
    ///
    /// Grammars of one namespace merge, and cannot be taken apart again: each change makes them all anew,
    /// from the files as they were.
    void load(const std::string& key, const InputSource& source, ErrorRelay& errors, ParseLocator& locator);

    void clear();

    /// For the next document; null when nothing is loaded.
    SchemaPool* pool();

private:
    struct Schema {
        std::string key;
        OXAVar<InputSource> document;
        FileSnapshots files;
    };

    static std::unique_ptr<SchemaPool> make_pool(std::vector<Schema>& schemas, const Schema* newest,
                                                 ErrorRelay& errors, ParseLocator& locator);
    static void load_into(SchemaPool& pool, Schema& schema, ErrorRelay& errors, ParseLocator& locator);

    std::vector<Schema> schemas_;
    std::unique_ptr<SchemaPool> pool_;
};

}  // namespace sax

#endif

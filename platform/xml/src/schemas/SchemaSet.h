// SPDX-License-Identifier: Apache-2.0
// The schemas that a reader has loaded.
#ifndef SCHEMA_SET_H
#define SCHEMA_SET_H

#include <memory>
#include <string>
#include <vector>

#include "events/ProblemReport.h"
#include "input/InputSource.h"
#include "parser/SchemaPool.h"
#include "schemas/SchemaResolver.h"

namespace sax {

class SchemaSet {
public:
    /// Adds the schema, or puts it in the place of the one with the same key, unless it has errors: those are
    /// reported, and the set is as before.
    ///
    /// Grammars of one namespace merge, and cannot be taken apart again: each change makes them all anew,
    /// from the files as they were.
    void load(const std::string& key, const InputSource& source, ProblemReport& report);

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
                                                 ProblemReport& report);
    static void load_into(SchemaPool& pool, Schema& schema, ProblemReport& report);

    std::vector<Schema> schemas_;
    std::unique_ptr<SchemaPool> pool_;
};

}  // namespace sax

#endif

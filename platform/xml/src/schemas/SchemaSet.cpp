// SPDX-License-Identifier: Apache-2.0

#include "schemas/SchemaSet.h"

#include <algorithm>
#include <utility>

#include "events/Document.h"
#include "limits/ParseLocator.h"
#include "limits/document_limits.h"
#include "parser/XercesParser.h"
#include "parser/report_refusals.h"
#include "schemas/check_schema_document.h"

namespace sax {

void SchemaSet::load_into(SchemaPool& pool, Schema& schema, ProblemReport& report) {
    const InputSource& source = *schema.document.Get();
    check_schema_document(source, report);
    if (report.has_errors()) return;
    // The content models of a schema do not say where they end: one limit is for all together.
    Document document(source, report, kContentModels);
    SchemaResolver resolver(document, schema.files);
    XercesParser(document, {}, &pool, resolver).load_schema();
}

/// Null when there are errors.
std::unique_ptr<SchemaPool> SchemaSet::make_pool(std::vector<Schema>& schemas, const Schema* newest,
                                                 ProblemReport& report) {
    auto pool = std::make_unique<SchemaPool>();
    for (Schema& schema : schemas) {
        // The warnings of the others are known already.
        report.pass_warnings(&schema == newest);
        load_into(*pool, schema, report);
        if (report.has_errors()) return nullptr;
    }
    pool->end_loading();
    return pool;
}

void SchemaSet::load(const std::string& key, const InputSource& source, ProblemReport& report) {
    report_refusals(source, report, [&] {
        std::vector<Schema> schemas = schemas_;
        auto newest =
            std::find_if(schemas.begin(), schemas.end(), [&](const Schema& s) { return s.key == key; });
        if (newest == schemas.end()) newest = schemas.emplace(newest);
        *newest = {key, source.in_memory(kExternalBytes), {}};

        auto pool = make_pool(schemas, &*newest, report);
        if (!pool) return;
        schemas_ = std::move(schemas);
        pool_ = std::move(pool);
    });
}

SchemaPool* SchemaSet::pool() {
    if (pool_ && pool_->has_grown()) {
        const auto locator = OXAVar<ParseLocator>::Adopt(new ParseLocator);
        ProblemReport silent(OXAISAXErrorHandler_var(), *locator.Get());
        report_refusals(*schemas_.front().document.Get(), silent, [&] {
            if (auto fresh = make_pool(schemas_, nullptr, silent)) pool_ = std::move(fresh);
        });
    }
    return pool_.get();
}

void SchemaSet::clear() {
    schemas_.clear();
    pool_.reset();
}

}  // namespace sax

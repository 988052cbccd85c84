#include "views/transfer/FileFilters.h"

#include "text/KelpaCopy.h"

namespace kelpa {

namespace {

FileQuestion::Filter filterOf(TransferFormat format)
{
    return {.name = displayName(format), .patterns = filePatterns(format)};
}

FileQuestion::Filter allFiles(AppLanguage language)
{
    return {.name = KelpaCopy::text(CopyKey::AllFiles, language),
            .patterns = {QStringLiteral("*")}};
}

} // namespace

QList<FileQuestion::Filter> filtersForReading(AppLanguage language)
{
    QList<FileQuestion::Filter> filters{
        {.name = KelpaCopy::text(CopyKey::ReadableFiles, language), .patterns = {}}};
    for (const TransferFormat format : allTransferFormats) {
        filters[0].patterns.append(filePatterns(format));
        filters.append(filterOf(format));
    }
    filters.append(allFiles(language));
    return filters;
}

QList<FileQuestion::Filter> filtersForWriting(TransferFormat format, AppLanguage language)
{
    return {filterOf(format), allFiles(language)};
}

} // namespace kelpa

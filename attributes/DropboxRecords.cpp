#include "attributes/Decoders.h"
#include "attributes/Inflate.h"
#include "attributes/Parsing.h"
#include "attributes/Protobuf.h"

namespace tolvane::attributes {

Outcome decodeDropboxAttributes(const Subject& subject, Answer& answer) {
    const auto content = inflated(subject.bytes);
    if (!content || !isText(textOf(*content))) {
        return misfit(0, "a zlib stream of at most 1 MiB of text");
    }
    answer.text("JSON", textOf(*content));
    return {};
}

Outcome decodeDropboxIdentity(const Subject& subject, Answer& answer) {
    const auto fields = protobufFields(subject.bytes);
    if (!fields) {
        return misfit(0, "a protobuf message");
    }
    for (const ProtobufField& field : *fields) {
        const auto inner = field.number == 1 ? protobufFields(field.bytes) : std::nullopt;
        if (inner && inner->size() == 1 && inner->front().number == 1 && inner->front().bytes.size() == 16) {
            answer.bytes("File", inner->front().bytes);
        } else if (!field.isNumber) {
            answer.bytes("Field " + std::to_string(field.number), field.bytes);
        } else {
            answer.number("Field " + std::to_string(field.number), field.value);
        }
    }
    return {};
}

} // namespace tolvane::attributes

#include "trace/diagnostic_log.h"

#include <ostream>

namespace varo_3_3::internal {

bool varoLogEnabled = false;

namespace {

/// Holds the stream that discards what is written to it, once one is needed.
///
/// It has no buffer, so every write fails. A buffer class of our own would do the same but cost
/// every program start 19,000 instructions, for the loader's search for the 17 symbols that such a
/// class names. It is never destroyed: nothing of ours runs at exit, where other objects may still
/// trace.
class VaroLog {
public:
    std::ostream& discarding() {
        std::ostream* stream = __atomic_load_n(&m_stream, __ATOMIC_ACQUIRE);
        if (stream == nullptr) {
            auto* const made = new std::ostream(nullptr);
            if (__atomic_compare_exchange_n(&m_stream, &stream, made, false, __ATOMIC_ACQ_REL,
                                            __ATOMIC_ACQUIRE)) {
                return *made;
            }
            delete made;  // another thread was first
        }
        return *stream;
    }

private:
    std::ostream* m_stream = nullptr;
};

}  // namespace

std::ostream& varoLog() {
    static constinit VaroLog holder;
    return isTraced(varoLogEnabled) ? console() : holder.discarding();
}

}  // namespace varo_3_3::internal

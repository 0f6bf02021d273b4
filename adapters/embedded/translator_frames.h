#pragma once

#include "adapters/embedded/translator.h"

namespace veldran::embedded {

/// While it lives, names mean what they mean in the scope.
class ScopeFrame {
public:
    ScopeFrame(Translator& translator, const Scope& scope)
        : translator_(translator), saved_(translator.scope_) {
        translator_.scope_ = &scope;
    }
    ~ScopeFrame() { translator_.scope_ = saved_; }
    ScopeFrame(const ScopeFrame&) = delete;
    ScopeFrame& operator=(const ScopeFrame&) = delete;

private:
    Translator& translator_;
    const Scope* saved_;
};

/// While it lives, the columns that are named are noted as what an index could serve.
class SeekFrame {
public:
    explicit SeekFrame(Translator& translator) : translator_(translator) { ++translator_.seeks_; }
    ~SeekFrame() { --translator_.seeks_; }
    SeekFrame(const SeekFrame&) = delete;
    SeekFrame& operator=(const SeekFrame&) = delete;

private:
    Translator& translator_;
};

/// While it lives, the body of a function is bound: its parameters are the arguments, and nothing around it
/// is seen. \throws AdoError 217 when functions nest too deeply
class InlineFrame {
public:
    InlineFrame(Translator& translator, const Routine& routine,
                const std::map<std::string, Fragment>& parameters);
    ~InlineFrame();
    InlineFrame(const InlineFrame&) = delete;
    InlineFrame& operator=(const InlineFrame&) = delete;

private:
    Translator& translator_;
    std::string_view text_;
    const Scope* scope_;
    const std::map<std::string, Fragment>* inlined_;
};

} // namespace veldran::embedded

#include "tests/support/intercepting_driver.h"

#include <ostream>

namespace veldran::test {

namespace {

using Parameters = std::span<const ado::BoundParameter>;

class InterceptedStatement final : public ado::PreparedStatement {
public:
    InterceptedStatement(std::unique_ptr<ado::PreparedStatement> inner,
                         std::shared_ptr<Interceptor> interceptor, std::string text)
        : inner_(std::move(inner)), interceptor_(std::move(interceptor)), text_(std::move(text)) {}

    ado::StatementResult execute(Parameters parameters, const ado::ExecuteSettings& settings) override {
        interceptor_->sending({Sent::Prepared, text_, {parameters.begin(), parameters.end()}, settings});
        return inner_->execute(parameters, settings);
    }

private:
    std::unique_ptr<ado::PreparedStatement> inner_;
    std::shared_ptr<Interceptor> interceptor_;
    std::string text_;
};

class InterceptedSession final : public ado::Session {
public:
    InterceptedSession(std::unique_ptr<ado::Session> inner, std::shared_ptr<Interceptor> interceptor)
        : inner_(std::move(inner)), interceptor_(std::move(interceptor)) {}

    ado::StatementResult execute(std::string_view text, Parameters parameters,
                                 const ado::ExecuteSettings& settings) override {
        interceptor_->sending(
            {Sent::Direct, std::string(text), {parameters.begin(), parameters.end()}, settings});
        return inner_->execute(text, parameters, settings);
    }

    std::unique_ptr<ado::PreparedStatement> prepare(std::string_view text,
                                                    std::span<const ado::ParameterInfo> parameters) override {
        Message message{Sent::Prepare, std::string(text), {}, {}};
        for (const ado::ParameterInfo& info : parameters) {
            message.parameters.push_back({info, Value()});
        }
        interceptor_->sending(message);
        return std::make_unique<InterceptedStatement>(inner_->prepare(text, parameters), interceptor_,
                                                      message.text);
    }

    std::vector<ado::ParameterInfo> describeProcedure(std::string_view name) override {
        interceptor_->sending({Sent::Describe, std::string(name), {}, {}});
        return inner_->describeProcedure(name);
    }

    ado::StatementResult callProcedure(std::string_view name, Parameters parameters,
                                       const ado::ExecuteSettings& settings) override {
        interceptor_->sending(
            {Sent::Procedure, std::string(name), {parameters.begin(), parameters.end()}, settings});
        return inner_->callProcedure(name, parameters, settings);
    }

    void begin() override {
        interceptor_->sending({Sent::Begin, "BEGIN TRANSACTION", {}, {}});
        inner_->begin();
    }

    void commit() override {
        interceptor_->sending({Sent::Commit, "COMMIT TRANSACTION", {}, {}});
        inner_->commit();
    }

    void rollback() override {
        interceptor_->sending({Sent::Rollback, "ROLLBACK TRANSACTION", {}, {}});
        inner_->rollback();
    }

private:
    std::unique_ptr<ado::Session> inner_;
    std::shared_ptr<Interceptor> interceptor_;
};

} // namespace

const char* nameOf(Sent how) {
    switch (how) {
    case Sent::Direct:
        return "direct";
    case Sent::Prepare:
        return "prepare";
    case Sent::Prepared:
        return "prepared";
    case Sent::Procedure:
        return "procedure";
    case Sent::Describe:
        return "describe";
    case Sent::Begin:
        return "begin";
    case Sent::Commit:
        return "commit";
    case Sent::Rollback:
        return "rollback";
    }
    return "";
}

void PrintTo(const Message& message, std::ostream* out) {
    *out << nameOf(message.how) << " \"" << message.text << '"';
    for (const ado::BoundParameter& parameter : message.parameters) {
        const ado::ParameterInfo& info = parameter.info;
        *out << "\n  " << info.name << " type " << info.type << " direction " << info.direction << " size "
             << info.size << " precision " << int{info.precision} << " scale " << int{info.scale} << " = ";
        if (parameter.value.isNull()) {
            *out << "NULL";
        } else {
            *out << '"' << parameter.value.toText() << "\" (kind "
                 << (parameter.value.asText()      ? "text"
                     : parameter.value.asBool()    ? "boolean"
                     : parameter.value.asInteger() ? "integer"
                     : parameter.value.asDecimal() ? "decimal"
                                                   : "double")
                 << ')';
        }
    }
    *out << "\n  timeout " << message.settings.commandTimeout
         << (message.settings.wantsRows ? "" : ", no rows");
}

std::unique_ptr<ado::Session> InterceptingDriver::open(const std::string& connectionString,
                                                       const std::string& user, const std::string& password) {
    interceptor_->opening(connectionString);
    return std::make_unique<InterceptedSession>(inner_->open(connectionString, user, password), interceptor_);
}

} // namespace veldran::test

#include "adapters/embedded/errors.h"

namespace veldran::embedded {

namespace {

std::string quoted(std::string_view name) {
    return "'" + std::string(name) + "'";
}

} // namespace

ado::Error makeError(int number, std::string_view sqlState, std::string description) {
    return {number, errorSource, std::move(description), std::string(sqlState), number};
}

void fail(int number, std::string_view sqlState, std::string description) {
    throw ado::AdoError(makeError(number, sqlState, std::move(description)));
}

void failUnknownObject(std::string_view name) {
    fail(errorUnknownObject, "42S02", "Il nome di oggetto " + quoted(name) + " non è valido.");
}

void failUnknownColumn(std::string_view name) {
    fail(errorUnknownColumn, "42S22", "Il nome di colonna " + quoted(name) + " non è valido.");
}

void failObjectExists(std::string_view name) {
    fail(2714, "42S01", "Il database contiene già un oggetto denominato " + quoted(name) + ".");
}

std::string truncationText(std::string_view column) {
    if (column.empty()) {
        return "I dati di tipo stringa verrebbero troncati.";
    }
    return "I dati di tipo stringa verrebbero troncati nella colonna " + quoted(column) + ".";
}

std::string overflowText(std::string_view typeName) {
    return "Errore di overflow aritmetico durante la conversione dell'espressione nel tipo di dati " +
           std::string(typeName) + ".";
}

std::string conversionText(std::string_view value, std::string_view typeName) {
    return "Conversione non riuscita del valore " + quoted(value) + " nel tipo di dati " +
           std::string(typeName) + ".";
}

} // namespace veldran::embedded

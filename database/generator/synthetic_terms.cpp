#include "database/generator/synthetic_terms.h"

#include <array>
#include <span>
#include <string_view>

namespace veldran::chartgen {
namespace {

using Terms = std::span<const std::string_view>;

// What an account deals with, by nature (ordine, patrimoniale, economico, da non stampare): groupings first.
constexpr std::array<std::string_view, 10> orderGroups = {"Garanzie prestate",
                                                          "Garanzie ricevute",
                                                          "Impegni di acquisto",
                                                          "Impegni di vendita",
                                                          "Beni di terzi",
                                                          "Beni presso terzi",
                                                          "Rischi",
                                                          "Fideiussioni",
                                                          "Depositi a custodia",
                                                          "Canoni a scadere"};
constexpr std::array<std::string_view, 10> balanceGroups = {
    "Immobilizzazioni",   "Crediti",          "Rimanenze", "Disponibilità",      "Debiti finanziari",
    "Debiti commerciali", "Fondi per rischi", "Riserve",   "Fondi ammortamento", "Ratei e risconti"};
constexpr std::array<std::string_view, 10> economicGroups = {
    "Ricavi", "Acquisti",       "Servizi",  "Costi del personale",    "Ammortamenti", "Godimento di beni",
    "Oneri",  "Accantonamenti", "Proventi", "Variazioni di rimanenze"};
constexpr std::array<std::string_view, 10> hiddenGroups = {
    "Conti transitori", "Conti di apertura", "Conti di chiusura", "Conti statistici", "Conti di collegamento",
    "Partite sospese",  "Rettifiche",        "Riepiloghi",        "Giroconti",        "Conti di controllo"};

constexpr std::array<std::string_view, 12> orderAccounts = {
    "Fideiussione per",   "Ipoteca su",  "Pegno su",     "Impegno per",
    "Ordini in corso di", "Leasing di",  "Deposito di",  "Comodato di",
    "Conto visione di",   "Noleggio di", "Cauzione per", "Patronage per"};
constexpr std::array<std::string_view, 12> balanceAccounts = {"Clienti per",
                                                              "Fornitori di",
                                                              "Acconti per",
                                                              "Crediti per",
                                                              "Debiti per",
                                                              "Impianti per",
                                                              "Attrezzature per",
                                                              "Giacenze di",
                                                              "Fondo rischi su",
                                                              "Anticipi per",
                                                              "Fatture da ricevere per",
                                                              "Fatture da emettere per"};
constexpr std::array<std::string_view, 12> economicAccounts = {
    "Vendite di",     "Acquisti di", "Trasporti di",  "Manutenzione di",
    "Provvigioni su", "Noleggi per", "Assistenza su", "Collaudi di",
    "Lavorazioni di", "Resi di",     "Sconti su",     "Assicurazione di"};
constexpr std::array<std::string_view, 12> hiddenAccounts = {
    "Transitorio di", "Pezzi prodotti di", "Ore macchina di", "Chiusura di",
    "Apertura di",    "Sospesi di",        "Giroconto di",    "Riepilogo di",
    "Rettifica di",   "Scostamento di",    "Collegamento di", "Controllo di"};

constexpr std::array<std::string_view, 40> goods = {
    "riduttori",  "ingranaggi",   "alberi",      "giunti",      "pompe",       "cilindri",   "valvole",
    "stampi",     "ricambi",      "lamiere",     "barre",       "tubi",        "fusioni",    "forgiati",
    "cuscinetti", "guarnizioni",  "viteria",     "motori",      "sensori",     "quadri",     "cavi",
    "vernici",    "lubrificanti", "utensili",    "imballaggi",  "carpenteria", "molle",      "catene",
    "filtri",     "raccordi",     "compressori", "ventilatori", "carrelli",    "centraline", "scambiatori",
    "serbatoi",   "nastri",       "bilance",     "presse",      "rulli"};

constexpr std::array<std::string_view, 107> places = {"Agrigento",
                                                      "Alessandria",
                                                      "Ancona",
                                                      "Aosta",
                                                      "Arezzo",
                                                      "Ascoli Piceno",
                                                      "Asti",
                                                      "Avellino",
                                                      "Bari",
                                                      "Barletta",
                                                      "Belluno",
                                                      "Benevento",
                                                      "Bergamo",
                                                      "Biella",
                                                      "Bologna",
                                                      "Bolzano",
                                                      "Brescia",
                                                      "Brindisi",
                                                      "Cagliari",
                                                      "Caltanissetta",
                                                      "Campobasso",
                                                      "Carbonia",
                                                      "Caserta",
                                                      "Catania",
                                                      "Catanzaro",
                                                      "Chieti",
                                                      "Como",
                                                      "Cosenza",
                                                      "Cremona",
                                                      "Crotone",
                                                      "Cuneo",
                                                      "Enna",
                                                      "Fermo",
                                                      "Ferrara",
                                                      "Firenze",
                                                      "Foggia",
                                                      "Forlì",
                                                      "Frosinone",
                                                      "Genova",
                                                      "Gorizia",
                                                      "Grosseto",
                                                      "Imperia",
                                                      "Isernia",
                                                      "L'Aquila",
                                                      "La Spezia",
                                                      "Latina",
                                                      "Lecce",
                                                      "Lecco",
                                                      "Livorno",
                                                      "Lodi",
                                                      "Lucca",
                                                      "Macerata",
                                                      "Mantova",
                                                      "Massa",
                                                      "Matera",
                                                      "Messina",
                                                      "Milano",
                                                      "Modena",
                                                      "Monza",
                                                      "Napoli",
                                                      "Novara",
                                                      "Nuoro",
                                                      "Oristano",
                                                      "Padova",
                                                      "Palermo",
                                                      "Parma",
                                                      "Pavia",
                                                      "Perugia",
                                                      "Pesaro",
                                                      "Pescara",
                                                      "Piacenza",
                                                      "Pisa",
                                                      "Pistoia",
                                                      "Pordenone",
                                                      "Potenza",
                                                      "Prato",
                                                      "Ragusa",
                                                      "Ravenna",
                                                      "Reggio Calabria",
                                                      "Reggio Emilia",
                                                      "Rieti",
                                                      "Rimini",
                                                      "Roma",
                                                      "Rovigo",
                                                      "Salerno",
                                                      "Sassari",
                                                      "Savona",
                                                      "Siena",
                                                      "Siracusa",
                                                      "Sondrio",
                                                      "Taranto",
                                                      "Teramo",
                                                      "Terni",
                                                      "Torino",
                                                      "Trani",
                                                      "Trapani",
                                                      "Trento",
                                                      "Treviso",
                                                      "Trieste",
                                                      "Udine",
                                                      "Urbino",
                                                      "Varese",
                                                      "Venezia",
                                                      "Verbania",
                                                      "Vercelli",
                                                      "Verona",
                                                      "Vicenza"};

constexpr std::array<Terms, 4> groupTerms = {orderGroups, balanceGroups, economicGroups, hiddenGroups};
constexpr std::array<Terms, 4> accountTerms = {orderAccounts, balanceAccounts, economicAccounts,
                                               hiddenAccounts};

std::string_view pick(Terms terms, std::int64_t place) {
    return terms[static_cast<std::size_t>(place) % terms.size()];
}

} // namespace

std::string describeAccount(int nature, int levelsBelow, std::int64_t turn, std::int64_t place) {
    const bool analytic = levelsBelow == 0;
    const Terms first = (analytic ? accountTerms : groupTerms)[static_cast<std::size_t>(nature)];
    const auto goodsCount = static_cast<std::int64_t>(goods.size());
    const auto placesCount = static_cast<std::int64_t>(places.size());
    const auto firstCount = static_cast<std::int64_t>(first.size());
    const std::int64_t texts = firstCount * goodsCount * placesCount;

    // Accounts of one grouping run through the places of one matter, as an accountant would open them;
    // groupings change matter at every step.
    const std::int64_t index = (turn % texts + place) % texts;
    std::string text;
    if (analytic)
        text.append(pick(first, index / (goodsCount * placesCount)))
            .append(" ")
            .append(pick(goods, index / placesCount))
            .append(" ")
            .append(pick(places, index));
    else
        text.append(pick(first, index))
            .append(" - ")
            .append(pick(goods, index / firstCount))
            .append(" ")
            .append(pick(places, index / (firstCount * goodsCount)));
    if (place >= texts)
        text += ", serie " + std::to_string(place / texts + 1);
    return text;
}

} // namespace veldran::chartgen

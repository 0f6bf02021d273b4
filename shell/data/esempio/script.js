// Script del cliente per la maschera dei conti attivati.
// tsOpen parte quando la maschera è pronta; tsClose può tenerla aperta restituendo true.

function tsOpen() {
    TXT_CONTORICERCA.toolTip = "Codice del conto, per esempio 66/02/01/0001; F4 apre l'elenco";
    TXT_CONTORICERCA.setFocus();
}

function tsClose() {
    if (TXT_CONTORICERCA.text !== "" && TRW_CONTI.text === "") {
        return !confirm("È stato digitato un conto che non è stato ricercato. Chiudere la maschera?");
    }
    return false;
}

SELECT
    IDENTITY(INT, 1, 1)     AS INDICE
    , CG24_GRUPPO_CG10      AS GRUPPO
    , CG24_CONTO            AS CONTO
    , CG24_DESCR            AS DESCRIZIONE
    , CG24_INDTIPOCONTO
    , CAST(
        CASE @NUMLIVELLI
            WHEN 2 THEN SUBSTRING(CG24_CONTO, 1, 2) + '/' + SUBSTRING(CG24_CONTO, 6, 5)
            WHEN 3 THEN SUBSTRING(CG24_CONTO, 1, 2) + '/' + SUBSTRING(CG24_CONTO, 5, 2) + '/' + SUBSTRING(CG24_CONTO, 7, 4)
            WHEN 4 THEN SUBSTRING(CG24_CONTO, 1, 2) + '/' + SUBSTRING(CG24_CONTO, 3, 2) + '/' + SUBSTRING(CG24_CONTO, 5, 2) + '/' + SUBSTRING(CG24_CONTO, 7, 4)
            WHEN 5 THEN SUBSTRING(CG24_CONTO, 1, 2) + '/' + SUBSTRING(CG24_CONTO, 3, 2) + '/' + SUBSTRING(CG24_CONTO, 5, 2) + '/' + SUBSTRING(CG24_CONTO, 7, 2) + '/' + SUBSTRING(CG24_CONTO, 9, 2)
        END
    AS NVARCHAR(14)) AS CONTOF
    , CAST(
        CASE @NUMLIVELLI
            WHEN 2 THEN
                CASE
                    WHEN SUBSTRING(CG24_CONTO, 6, 5) = '00000' THEN SUBSTRING(CG24_CONTO, 1, 2)
                    ELSE CG24_CONTO
                END
            WHEN 3 THEN
                CASE
                    WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' THEN SUBSTRING(CG24_CONTO, 1, 2)
                    WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' THEN SUBSTRING(CG24_CONTO, 1, 6)
                    ELSE CG24_CONTO
                END
            WHEN 4 THEN
                CASE
                    WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' AND SUBSTRING(CG24_CONTO, 3, 2) = '00' THEN SUBSTRING(CG24_CONTO, 1, 2)
                    WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' THEN SUBSTRING(CG24_CONTO, 1, 4)
                    WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' THEN SUBSTRING(CG24_CONTO, 1, 6)
                    ELSE CG24_CONTO
                END
            WHEN 5 THEN
                CASE
                    WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00' AND SUBSTRING(CG24_CONTO, 7, 2) = '00' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' AND SUBSTRING(CG24_CONTO, 3, 2) = '00' THEN SUBSTRING(CG24_CONTO, 1, 2)
                    WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00' AND SUBSTRING(CG24_CONTO, 7, 2) = '00' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' THEN SUBSTRING(CG24_CONTO, 1, 4)
                    WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00' AND SUBSTRING(CG24_CONTO, 7, 2) = '00' THEN SUBSTRING(CG24_CONTO, 1, 6)
                    WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00' THEN SUBSTRING(CG24_CONTO, 1, 8)
                    ELSE CG24_CONTO
                END
        END
    AS NVARCHAR(10)) AS CODEHEADER
    , CAST(
        CASE
            CASE @NUMLIVELLI
                WHEN 2 THEN
                    CASE
                        WHEN SUBSTRING(CG24_CONTO, 6, 5) = '00000' THEN 1
                        ELSE 2
                    END
                WHEN 3 THEN
                    CASE
                        WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' THEN 1
                        WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' THEN 2
                        ELSE 3
                    END
                WHEN 4 THEN
                    CASE
                        WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' AND SUBSTRING(CG24_CONTO, 3, 2) = '00' THEN 1
                        WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' THEN 2
                        WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' THEN 3
                        ELSE 4
                    END
                WHEN 5 THEN
                    CASE
                        WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00' AND SUBSTRING(CG24_CONTO, 7, 2) = '00' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' AND SUBSTRING(CG24_CONTO, 3, 2) = '00' THEN 1
                        WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00' AND SUBSTRING(CG24_CONTO, 7, 2) = '00' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' THEN 2
                        WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00' AND SUBSTRING(CG24_CONTO, 7, 2) = '00' THEN 3
                        WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00' THEN 4
                        ELSE 5
                    END
            END
            WHEN 1 THEN NULL
            WHEN 2 THEN SUBSTRING(CG24_CONTO, 1, 2) + '00000000'
            WHEN 3 THEN
                CASE @NUMLIVELLI
                    WHEN 3 THEN SUBSTRING(CG24_CONTO, 1, 6) + '0000'
                    ELSE SUBSTRING(CG24_CONTO, 1, 4) + '000000'
                END
            WHEN 4 THEN SUBSTRING(CG24_CONTO, 1, 6) + '0000'
            WHEN 5 THEN SUBSTRING(CG24_CONTO, 1, 8) + '00'
        END
    AS NCHAR(10)) AS PARENT
    , CAST(SUBSTRING(CG24_CONTO, 1, 2) + '00000000' AS NCHAR(10)) AS LIVELLO1
    , CAST(
        CASE @NUMLIVELLI
            WHEN 2 THEN CG24_CONTO
            WHEN 3 THEN SUBSTRING(CG24_CONTO, 1, 6) + '0000'
            WHEN 4 THEN SUBSTRING(CG24_CONTO, 1, 4) + '000000'
            WHEN 5 THEN SUBSTRING(CG24_CONTO, 1, 4) + '000000'
        END
    AS NCHAR(10)) AS LIVELLO2
    , CAST(
        CASE @NUMLIVELLI
            WHEN 2 THEN NULL
            WHEN 3 THEN CG24_CONTO
            WHEN 4 THEN SUBSTRING(CG24_CONTO, 1, 6) + '0000'
            WHEN 5 THEN SUBSTRING(CG24_CONTO, 1, 6) + '0000'
        END
    AS NCHAR(10)) AS LIVELLO3
    , CAST(
        CASE @NUMLIVELLI
            WHEN 2 THEN NULL
            WHEN 3 THEN NULL
            WHEN 4 THEN CG24_CONTO
            WHEN 5 THEN SUBSTRING(CG24_CONTO, 1, 8) + '00'
        END
    AS NCHAR(10)) AS LIVELLO4
    , CAST(
        CASE @NUMLIVELLI
            WHEN 2 THEN NULL
            WHEN 3 THEN NULL
            WHEN 4 THEN NULL
            WHEN 5 THEN CG24_CONTO
        END
    AS NCHAR(10)) AS LIVELLO5
    , CAST(
            CASE @NUMLIVELLI
                WHEN 2 THEN
                    CASE
                        WHEN SUBSTRING(CG24_CONTO, 6, 5) = '00000' THEN 1
                        ELSE 2
                    END
                WHEN 3 THEN
                    CASE
                        WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' THEN 1
                        WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' THEN 2
                        ELSE 3
                    END
                WHEN 4 THEN
                    CASE
                        WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' AND SUBSTRING(CG24_CONTO, 3, 2) = '00' THEN 1
                        WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' THEN 2
                        WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' THEN 3
                        ELSE 4
                    END
                WHEN 5 THEN
                    CASE
                        WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00' AND SUBSTRING(CG24_CONTO, 7, 2) = '00' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' AND SUBSTRING(CG24_CONTO, 3, 2) = '00' THEN 1
                        WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00' AND SUBSTRING(CG24_CONTO, 7, 2) = '00' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' THEN 2
                        WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00' AND SUBSTRING(CG24_CONTO, 7, 2) = '00' THEN 3
                        WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00' THEN 4
                        ELSE 5
                    END
            END
    AS SMALLINT) AS NRLIVELLO
    , CAST(
        CASE @NUMLIVELLI
            WHEN 2 THEN CASE WHEN SUBSTRING(CG24_CONTO, 6, 5) <> '00000' THEN 1 ELSE 0 END
            WHEN 3 THEN CASE WHEN SUBSTRING(CG24_CONTO, 7, 4) <> '0000' THEN 1 ELSE 0 END
            WHEN 4 THEN CASE WHEN SUBSTRING(CG24_CONTO, 7, 4) <> '0000' THEN 1 ELSE 0 END
            WHEN 5 THEN CASE WHEN SUBSTRING(CG24_CONTO, 9, 2) <> '00' THEN 1 ELSE 0 END
        END
    AS BIT) AS ISANALITICO
    , CAST(0 AS BIT)    AS ATTIVO
    , CAST(0 AS BIT)    AS CORRELATO
INTO
    #CG24_TABPDC
FROM
    CG24_TABPDC
WHERE
    CG24_GRUPPO_CG10 = @CODICE_PDC_COGE
ORDER BY
    CG24_GRUPPO_CG10 ASC,
    CG24_CONTO ASC

-- An update that moves keys is first tried as it is.
UPDATE CONTI SET CONTO = '99' WHERE GRUPPO = 1
----
UPDATE main."CONTI" SET "CONTO" = '99        ' WHERE "CONTI"."GRUPPO" = 1

INSERT INTO GL_mend (iyear, iperiod, bflag_IA) VALUES (2023, 1, 1)

parameter NUMBER_AOS = 2;

(while T)

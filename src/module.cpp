// module.cpp: the shared object is the folders of src/, with the entry point of shell/.

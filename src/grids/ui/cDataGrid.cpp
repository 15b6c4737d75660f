#include <QtWidgets>

// Lectura de planillas reales: un CSV convertido por una suite de oficina (ssconvert) a .xls, .xlsx
// y .ods se lee con los mismos valores en los tres formatos; un .xlsx con cadenas compartidas, dos
// hojas y fechas con formato propio; los .csv en sus codificaciones y separadores; y los archivos
// dañados o que no son planillas, que se dicen con un aviso.

#include "apoyo/filas.h"
#include "articles/planillas.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <xlsxwriter.h>

namespace orv {
namespace {

// Una celda como texto: "T:texto", "N:número", "F:aaaa-mm-dd" o "" la vacía.
QString comoTexto(const Celda& c) {
    switch (c.tipo) {
    case Celda::Tipo::Vacia: return {};
    case Celda::Tipo::Texto: return QStringLiteral("T:") + c.texto;
    case Celda::Tipo::Numero: return QStringLiteral("N:") + c.aTexto();
    case Celda::Tipo::Fecha: return QStringLiteral("F:") + c.fecha.toString(Qt::ISODate);
    }
    return {};
}

// Las filas de una hoja: "número|celda|celda...".
QStringList filasDe(Planilla& p, int hoja) {
    QStringList r;
    auto lector = p.lee(hoja);
    while (auto f = lector->siguiente()) {
        QStringList celdas{QString::number(f->numero)};
        for (const Celda& c : f->celdas) celdas << comoTexto(c);
        r << celdas.join(u'|');
    }
    return r;
}

void escribe(const QString& ruta, const QByteArray& bytes) {
    QFile f(ruta);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
}

QString convierte(const QString& csv, const QString& extension) {
    const QString destino = csv.left(csv.lastIndexOf(u'.') + 1) + extension;
    QProcess p;
    p.start(QStringLiteral("ssconvert"), {csv, destino});
    p.waitForFinished(60000);
    return QFile::exists(destino) ? destino : QString();
}

TEST(Planillas, LosMismosValoresEnXlsXlsxYOdsEscritosPorUnaSuiteDeOficina) {
    QTemporaryDir dir;
    const QString csv = dir.filePath(QStringLiteral("precios.csv"));
    // Textos con acentos y con coma, decimales, negativos, un código de 13 cifras, fechas ISO,
    // una fecha que la suite deja como texto, celdas vacías en medio y al final, y una fila vacía.
    escribe(csv, "Codigo,Descripcion,Precio,Fecha,Cantidad\n"
                 "A-0101,Caf\xC3\xA9 con leche \xC3\xB1" "and\xC3\xBA,12.5,2024-05-20,3\n"
                 "B-7,\"Yerba, 1 kg\",1234.75,,-2\n"
                 ",,,,\n"
                 "7790001000012,\xC3\x9Altimo,,31/12/2023,0.125\n"
                 "C-9,Az\xC3\xBA" "car,0.1,1999-01-01,\n");
    const QStringList esperadas = {
        "1|T:Codigo|T:Descripcion|T:Precio|T:Fecha|T:Cantidad",
        "2|T:A-0101|T:Café con leche ñandú|N:12.5|F:2024-05-20|N:3",
        "3|T:B-7|T:Yerba, 1 kg|N:1234.75||N:-2",
        "5|N:7790001000012|T:Último||T:31/12/2023|N:0.125",
        "6|T:C-9|T:Azúcar|N:0.1|F:1999-01-01",
    };
    for (const char* ext : {"xls", "xlsx", "ods"}) {
        SCOPED_TRACE(ext);
        const QString ruta = convierte(csv, QString::fromLatin1(ext));
        ASSERT_FALSE(ruta.isEmpty()) << "ssconvert no escribió el ." << ext;
        auto p = Planilla::abre(ruta);
        EXPECT_EQ(p->hojas(), QStringList{QStringLiteral("precios.csv")});
        EXPECT_EQ(p->buscaHoja(QStringLiteral("PRECIOS.CSV$")), 0);
        EXPECT_EQ(filasDe(*p, 0), esperadas);
    }
}

TEST(Planillas, XlsxConCadenasCompartidasDosHojasYFechasConFormatoPropio) {
    QTemporaryDir dir;
    const QString ruta = dir.filePath(QStringLiteral("libro.xlsx"));
    lxw_workbook* libro = workbook_new(ruta.toUtf8().constData());
    lxw_format* fecha = workbook_add_format(libro);
    format_set_num_format(fecha, "dd/mm/yyyy");
    lxw_format* importe = workbook_add_format(libro);
    format_set_num_format(importe, "#,##0.00");
    lxw_worksheet* vacia = workbook_add_worksheet(libro, "Portada");
    (void)vacia;
    lxw_worksheet* hoja = workbook_add_worksheet(libro, "Precios 2024");
    worksheet_write_string(hoja, 0, 0, "Nombre", nullptr);
    worksheet_write_string(hoja, 0, 2, "Alta", nullptr);
    worksheet_write_string(hoja, 2, 0, "Pe\xC3\xB1" "a & \"Hijos\" <SA>", nullptr);
    worksheet_write_number(hoja, 2, 1, 1500.5, importe);
    lxw_datetime dia = {2023, 2, 28, 0, 0, 0};
    worksheet_write_datetime(hoja, 2, 2, &dia, fecha);
    worksheet_write_string(hoja, 3, 0, "Pe\xC3\xB1" "a & \"Hijos\" <SA>", nullptr); // la misma cadena compartida
    worksheet_write_boolean(hoja, 3, 1, 1, nullptr);
    worksheet_write_string(hoja, 3, 27, "AB", nullptr);
    ASSERT_EQ(workbook_close(libro), LXW_NO_ERROR);

    auto p = Planilla::abre(ruta);
    EXPECT_EQ(p->hojas(), (QStringList{QStringLiteral("Portada"), QStringLiteral("Precios 2024")}));
    EXPECT_EQ(p->buscaHoja(QStringLiteral("precios 2024$")), 1);
    EXPECT_EQ(p->buscaHoja(QStringLiteral("Hoja1$")), std::nullopt);
    EXPECT_EQ(filasDe(*p, 0), QStringList{});
    QStringList cuarta = {"4", "T:Peña & \"Hijos\" <SA>", "N:1"};
    for (int i = 2; i < 27; ++i) cuarta << QString();
    cuarta << QStringLiteral("T:AB");
    EXPECT_EQ(filasDe(*p, 1), (QStringList{"1|T:Nombre||T:Alta", "3|T:Peña & \"Hijos\" <SA>|N:1500.5|F:2023-02-28",
                                           cuarta.join(u'|')}));
}

TEST(Planillas, CsvEnSusCodificacionesYSeparadores) {
    struct Caso {
        const char* nombre;
        QByteArray bytes;
        QStringList filas;
    };
    const Caso casos[] = {
        {"UTF-8 con BOM y punto y coma", QByteArray("\xEF\xBB\xBF" "Nombre;Precio\r\nCaf\xC3\xA9;12,5\r\n"),
         {"1|T:Nombre|T:Precio", "2|T:Café|T:12,5"}},
        {"UTF-8 sin BOM y comas", QByteArray("Nombre,Precio\n\xC3\x91" "and\xC3\xBA,3\n"), {"1|T:Nombre|T:Precio", "2|T:Ñandú|T:3"}},
        {"Windows-1252 con tabulaciones", QByteArray("Nombre\tPrecio\n\xD1" "and\xFA \x80\t7\n"),
         {"1|T:Nombre|T:Precio", "2|T:Ñandú €|T:7"}},
        {"comillas con separador, salto de línea y comillas dobladas",
         QByteArray("a;b;c\n\"x;y\";\"dos\nl\xC3\xAD" "neas\";\"dice \"\"hola\"\"\"\n\n;;\nfin;;\n"),
         {"1|T:a|T:b|T:c", "2|T:x;y|T:dos\nlíneas|T:dice \"hola\"", "6|T:fin"}},
    };
    QTemporaryDir dir;
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.nombre);
        const QString ruta = dir.filePath(QStringLiteral("datos.csv"));
        escribe(ruta, c.bytes);
        auto p = Planilla::abre(ruta);
        EXPECT_EQ(p->hojas(), QStringList{QStringLiteral("datos")});
        EXPECT_EQ(filasDe(*p, 0), c.filas);
    }
}

TEST(Planillas, UnArchivoQueNoSePuedeLeerSeDiceSinTerminar) {
    QTemporaryDir dir;
    const QString csv = dir.filePath(QStringLiteral("buena.csv"));
    escribe(csv, "a,b\n1,2\n");
    const QString xlsx = convierte(csv, QStringLiteral("xlsx"));
    const QString ods = convierte(csv, QStringLiteral("ods"));
    ASSERT_FALSE(xlsx.isEmpty());
    ASSERT_FALSE(ods.isEmpty());
    QFile fx(xlsx), fo(ods);
    ASSERT_TRUE(fx.open(QIODevice::ReadOnly) && fo.open(QIODevice::ReadOnly));
    const QByteArray bytesXlsx = fx.readAll(), bytesOds = fo.readAll();

    struct Caso {
        const char* archivo;
        QByteArray bytes;
        const char* aviso;
    };
    const Caso casos[] = {
        {"texto.xlsx", "esto no es un libro", "El archivo texto.xlsx no es un libro .xlsx que se pueda leer (está dañado o es de otro formato)."},
        {"cortado.xlsx", bytesXlsx.left(bytesXlsx.size() / 2),
         "El archivo cortado.xlsx no es un libro .xlsx que se pueda leer (está dañado o es de otro formato)."},
        {"cortado.ods", bytesOds.left(bytesOds.size() / 2),
         "El archivo cortado.ods no es un libro .ods que se pueda leer (está dañado o es de otro formato)."},
        {"basura.xls", QByteArray(4096, '\x5A'), "El archivo basura.xls no es un libro .xls que se pueda leer (está dañado o es de otro formato)."},
        {"libro.xls", bytesXlsx, "El archivo libro.xls no es un libro .xls que se pueda leer (está dañado o es de otro formato)."},
        {"otra.ods", bytesXlsx, "El archivo otra.ods no es un libro .ods que se pueda leer: le falta content.xml."},
        {"binario.csv", QByteArray("a,b\n\0\1\2", 7), "El archivo binario.csv no es un texto separado por comas."},
        {"foto.png", "\x89PNG", "El archivo foto.png no es una planilla: se leen archivos .xls, .xlsx, .ods y .csv."},
    };
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.archivo);
        const QString ruta = dir.filePath(QString::fromLatin1(c.archivo));
        escribe(ruta, c.bytes);
        EXPECT_EQ(prueba::AvisoDe([&] {
                      auto p = Planilla::abre(ruta);
                      filasDe(*p, 0);
                  }),
                  QString::fromUtf8(c.aviso));
    }
    const QString falta = dir.filePath(QStringLiteral("no_esta.xlsx"));
    EXPECT_EQ(prueba::AvisoDe([&] { Planilla::abre(falta); }), QStringLiteral("No existe el archivo ") + falta);
}

TEST(Planillas, XlsxConUnaHojaDeXmlRotoAvisaAlLeerla) {
    QTemporaryDir dir;
    const QString csv = dir.filePath(QStringLiteral("rota.csv"));
    escribe(csv, "a,b\n1,2\n");
    const QString xlsx = convierte(csv, QStringLiteral("xlsx"));
    ASSERT_FALSE(xlsx.isEmpty());
    // Se reemplaza la hoja por un XML que se corta en medio de una fila.
    QProcess zip;
    QDir(dir.path()).mkpath(QStringLiteral("xl/worksheets"));
    escribe(dir.filePath(QStringLiteral("xl/worksheets/sheet1.xml")),
            "<worksheet><sheetData><row r=\"1\"><c r=\"A1\"><v>1</v></c><c r=\"B1\"><v>");
    zip.setWorkingDirectory(dir.path());
    zip.start(QStringLiteral("python3"), {QStringLiteral("-c"),
                                          QStringLiteral("import zipfile,sys\n"
                                                         "src=zipfile.ZipFile(sys.argv[1]); dst=zipfile.ZipFile(sys.argv[2],'w')\n"
                                                         "[dst.writestr(i, open('xl/worksheets/sheet1.xml','rb').read() if i.filename=="
                                                         "'xl/worksheets/sheet1.xml' else src.read(i.filename)) for i in src.infolist()]\n"
                                                         "dst.close()"),
                                          xlsx, dir.filePath(QStringLiteral("rota2.xlsx"))});
    ASSERT_TRUE(zip.waitForFinished(30000));
    auto p = Planilla::abre(dir.filePath(QStringLiteral("rota2.xlsx")));
    const QString aviso = prueba::AvisoDe([&] { filasDe(*p, 0); });
    EXPECT_TRUE(aviso.startsWith(QStringLiteral("El archivo rota2.xlsx está dañado: "))) << aviso.toStdString();
}

} // namespace
} // namespace orv

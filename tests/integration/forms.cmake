# SPDX-FileCopyrightText: the uicov authors
# SPDX-License-Identifier: MIT

# Makes forms.h out of one form of each of Qt's examples that bring some, where they are installed: other people's
# names, captions and layouts. Sets forms_header and forms_programs, how many there are.
set(forms
    sql/sqlbrowser/qsqlconnectiondialog sql/books/bookwindow network/securesocketclient/sslclient
    network/http/authenticationdialog network/network-chat/chatdialog network/secureudpclient/mainwindow
    network/secureudpserver/mainwindow network/torrent/forms/addtorrentform corelib/ipc/sharedmemory/dialog
    dbus/chat/chatmainwindow dbus/remotecontrolledcar/controller/controller widgets/touch/dials/dials
    widgets/painting/fontsampler/mainwindowbase widgets/tutorials/notepad/notepad
    widgets/graphicsview/padnavigator/form widgets/graphicsview/embeddeddialogs/embeddeddialog
    widgets/itemviews/editabletreemodel/mainwindow widgets/animation/easing/form
    widgets/widgets/stylesheet/mainwindow widgets/tools/undo/mainwindow)
set(forms_programs 0)
set(forms_headers)
set(includes "")
set(entries "#define UICOV_FORMS")
foreach(form IN LISTS forms)
    set(source ${examples}/${form}.ui)
    if(NOT EXISTS ${source})
        continue()
    endif()
    math(EXPR forms_programs "${forms_programs} + 1")
    file(READ ${source} text)
    string(REGEX MATCH "<widget class=\"([A-Za-z]+)\"" top "${text}")
    set(top ${CMAKE_MATCH_1})
    # Classes of one name would be one class in one program.
    string(REGEX MATCH "<class>[A-Za-z]+</class>" class "${text}")
    string(REPLACE "${class}" "<class>Form${forms_programs}</class>" text "${text}")
    file(CONFIGURE OUTPUT form${forms_programs}.ui CONTENT "${text}" @ONLY)
    set(header ${CMAKE_CURRENT_BINARY_DIR}/ui_form${forms_programs}.h)
    add_custom_command(OUTPUT ${header}
        COMMAND Qt5::uic -o ${header} ${CMAKE_CURRENT_BINARY_DIR}/form${forms_programs}.ui
        DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/form${forms_programs}.ui VERBATIM)
    list(APPEND forms_headers ${header})
    string(APPEND includes "#include \"ui_form${forms_programs}.h\"\n")
    get_filename_component(folder ${form} DIRECTORY)
    string(REPLACE "/" "_" program ${folder})
    string(APPEND entries " UICOV_FORM(Form${forms_programs}, ${top}, \"${program}\")")
endforeach()
set(forms_header ${CMAKE_CURRENT_BINARY_DIR}/forms.h)
file(CONFIGURE OUTPUT ${forms_header} CONTENT "${includes}${entries}\n" @ONLY)

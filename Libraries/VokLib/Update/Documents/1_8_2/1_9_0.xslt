<?xml version="1.0" encoding="UTF-8"?>
<!-- 1.8.2 to 1.9.0: the root tells the form of the file names, which until now was the site's. -->
<xsl:stylesheet version="1.0" exclude-result-prefixes="from to"
    xmlns:xsl="http://www.w3.org/1999/XSL/Transform"
    xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance"
    xmlns:to="http://qel.example/ns/qeli/1_9_0/qeli"
    xmlns:from="http://qel.example/ns/qeli/1_8_2/qeli"
    xmlns="http://qel.example/ns/qeli/1_9_0/qeli">
  <xsl:include href="../Shared/OneVersionOnly.xslt"/>
  <xsl:include href="../Shared/KeepForeignContent.xslt"/>

  <xsl:param name="previousFilenameForm" select="'qelrootrelative'"/>

  <xsl:template match="/">
    <xsl:call-template name="refuseOtherVersions">
      <xsl:with-param name="expected" select="'http://qel.example/ns/qeli/1_8_2/qeli'"/>
    </xsl:call-template>
    <xsl:apply-templates/>
  </xsl:template>

  <xsl:template match="/from:QEL">
    <QEL xsi:schemaLocation="http://qel.example/ns/qeli/1_9_0/qeli http://qel.example/ns/qeli/1_9_0/qeli.xsd">
      <xsl:attribute name="to:filenameform">
        <xsl:value-of select="$previousFilenameForm"/>
      </xsl:attribute>
      <xsl:apply-templates/>
    </QEL>
  </xsl:template>

  <xsl:template match="from:*">
    <xsl:element name="{local-name()}">
      <xsl:copy-of select="@*"/>
      <xsl:apply-templates/>
    </xsl:element>
  </xsl:template>
</xsl:stylesheet>
